// The view of a scale: base line or circle with marks, the part that the value fills, and a
// pointer. The document side is dynamic/QELDocScale.h.
#pragma once

#include "dynamic/QELViewParam.h"
#include "dynamic/ScaleGeometry.h"
#include "dynamic/SetWords.h"

class CQELViewScale final : public CQELViewLeaf<CQELViewScale, CQELViewParam, QEL_TYPE_SCALE> {
public:
    using CQELViewLeaf::CQELViewLeaf;

    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override;
    int Rotate(POINT ptCentre, int32_t nAngle) override; // turns the round type where it stands
    bool PaintedRect(const QelRect& rcQel, RECT* prcOut) const override;
    // On the rectangle, or the circle of the ticks, that it is laid out in.
    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;
    [[nodiscard]] bool DrawsChildren() const override { return false; }
    bool MapUnits(const QelRect& rcQel, UnitMap* pOut) const override;
    int GetAttrBlockSize(int* pnSize) const override;
    int GetAttrBlock(void* pBlock) const override;
    int SetAttrBlock(const void* pBlock) override;
    int SetDraftParam(uint32_t nValue) override;
    int SetDraftForeParam(uint32_t nValue) override;
    int SetDraftBackParam(uint32_t nValue) override;
    [[nodiscard]] uint32_t GetParamMask() const override;
    [[nodiscard]] bool Blinks() const override;

    [[nodiscard]] uint32_t HostId() const override { return m_attr.nId; }
    [[nodiscard]] bool KnowsSelector(uint32_t nSelector) const override;

    // Selectors 0 to 6. 0: not known to scales, or refused (a number of divisions below 1).
    int SetProperty(uint32_t nSelector, uint32_t nValue) override;
    int GetProperty(uint32_t nSelector, uint32_t* pnValue) const override;
    // The form of the value that was set last is drawn.
    using CHostDriven::SetValue; // by a whole number they have none of their own
    int SetValue(float fValue);
    [[nodiscard]] float FloatValue() const { return m_value.fValue; }
    int SetValue(uint32_t nPin, float fValue) override;
    int GetValue(uint32_t nPin, float* pfValue) const override;

    [[nodiscard]] bool FollowsNumber() const override { return true; }
    [[nodiscard]] bool KeepsNumber() const override { return true; }
    void ShowNumber(double fNumber) override;
    [[nodiscard]] double ShownNumber() const override;
    [[nodiscard]] bool CanMove() const override { return true; }
    double FullTurn(double* pfLow) const override;
    int TakeSet(const SetTexts& texts) override;
    void ResetValues() override;

private:
    int TakeProperty(uint32_t nSelector, uint32_t nValue);
    void NoteNumbered() const;
    [[nodiscard]] RECT Layout() const; // the rectangle, or the square of the ticks; drawing units
    bool MapLayout(const QelRect& rcQel, RECT* prcOut) const; // false for none
    void DrawStraight(HDC hdc, const RECT& rcDevice, CPixelScale px) const;
    void DrawRound(HDC hdc, const RECT& rc, CPixelScale px) const;
    void DrawStraightMarks(HDC hdc, const RECT& rc, CPixelScale px) const;
    void DrawRoundMarks(HDC hdc, const RoundScale& round, CPixelScale px) const;
    void FillSweep(HDC hdc, const RoundScale& round, const ScaleSweep& sweep, CPixelScale px) const;
    [[nodiscard]] ScaleSweep SweepOf() const;
    [[nodiscard]] int32_t Divisions() const;
    [[nodiscard]] ScaleValue Value() const;
    [[nodiscard]] bool IsRound() const;
    [[nodiscard]] bool IsVertical() const { return m_attr.nType < 2; }
    [[nodiscard]] bool FillsRound() const; // the round types; straight ones always fill

    QELSCALEATTR m_attr{sizeof(QELSCALEATTR), 0, 0, 1, 1, 1, 100, 0, {0, 0, 10, 10, 0, 0, 0}};
    uint32_t m_clrPin = 0xAAAAAA;
    uint32_t m_clrMark = 0xAAAAAA;
    int32_t m_nDivisions = 10;
    uint32_t m_nStartCode = 0;
    ScaleValue m_value{0, 10, 0, 0, false};
    CSetWords m_words;
    int32_t m_nDraft = 0;
    uint32_t m_clrFore = 0xFFFFFF;
    uint32_t m_clrBack = 0;
    int32_t m_nOffset = 0; // degrees, counter-clockwise
};
