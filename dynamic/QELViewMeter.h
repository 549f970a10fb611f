// The view of a meter: keeps the settings and values that the host sends, draws the child shapes as
// the meter's face, and owns the renderer that paints the dial or bar on it. The document side is
// dynamic/QELDocMeter.h.
#pragma once

#include "dynamic/QELViewParam.h"
#include "dynamic/Selectors.h"
#include "dynamic/SetWords.h"
#include "meter/Meter.h"
#include "render/LiveLayer.h"

#include <memory>

constexpr uint32_t METER_FULL_REDRAW = 0x1000000; // in a meter's flags

// What a meter keeps from one draw to the next. QELUpdate has one of its own, so that a host that
// uses both sees in its partial redraws what it always saw.
struct MeterPicture {
    MeterPicture() = default;
    ~MeterPicture() { DropFace(); }
    MeterPicture(const MeterPicture&) = delete;
    MeterPicture& operator=(const MeterPicture&) = delete;
    void DropFace();
    void DoubtFace();
    // It was drawn there last.
    [[nodiscard]] bool IsFor(const QelRect& rcQel, SIZE ref) const
    {
        return rcQel == QelRect(rcLast, pxLast) && lastRef.cx == ref.cx && lastRef.cy == ref.cy;
    }
    // Of a large face the region was made for what showed then.
    [[nodiscard]] bool HasFaceFor(HDC hdc) const;

    std::unique_ptr<CMeter> pRenderer;
    RECT rcLast{0, 0, 0, 0}; // of the last draw
    SIZE lastRef{0, 0};      // the reference size then: the place follows it as well
    CPixelScale pxLast;
    HRGN hFace = nullptr;
    CQELViewElm::ChangeStamp faceChanges; // when the shapes were last looked at; never
    uint32_t nFaceSource[2] = {0, 0};     // the sum of what they had then, as words like the stamp
    int8_t nPassedBlink = 0;
    bool bPartOfFace = false; // it is right where rcFaceShown is; its box is the whole's
    RECT rcFaceShown{0, 0, 0, 0};
};

struct UpdatedMeter final : LivePicture {
    MeterPicture picture;
};

class CQELViewMeter final : public CQELViewParam {
public:
    CQELViewMeter(int32_t nRefW, int32_t nRefH, CPool* pPool = nullptr) noexcept;

    int NewInstance(CQELViewElm** ppOut) const override;
    int Duplicate(CQELViewElm* pTargetParent, CQELViewElm** ppOut) override;
    int Draw(HDC hdc, const QelRect& rcQel, uint32_t nFlags) override;
    bool PaintedRect(const QelRect& rcQel, RECT* prcOut) const override;
    // On the rectangle or circle that it is laid out in.
    [[nodiscard]] bool IsHit(const QelRect& rcQel, POINT pt) const override;
    [[nodiscard]] bool DrawsChildren() const override { return false; } // but its face
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
    [[nodiscard]] bool WantsFullRedraw() const override
    {
        return m_attr.nFlags & METER_FULL_REDRAW;
    }
    [[nodiscard]] bool KnowsSelector(uint32_t nSelector) const override;
    [[nodiscard]] bool HasSign(uint32_t nSelector) const override;

    // Any selector but the value. 0: not known to meters, or the value is refused.
    int SetProperty(uint32_t nSelector, uint32_t nValue) override;
    int GetProperty(uint32_t nSelector, uint32_t* pnValue) const override;
    // The base value is one setting in two forms: an integer sets both, a float its own and its
    // whole part; each form reads its own.
    int SetBase(float fValue) override;
    int GetBase(float* pfValue) const override;
    [[nodiscard]] float Base() const { return m_fBase; }

    // The main value (nPin 0) or that of a pin, 1 to 32. The form that was set last is drawn.
    int SetValue(uint32_t nPin, uint32_t nValue) override;
    int SetValue(uint32_t nPin, float fValue) override;
    int GetValue(uint32_t nPin, uint32_t* pnValue) const override;
    int GetValue(uint32_t nPin, float* pfValue) const override;

    // Both forms at once. A clock shows the time in the form that was set last, so it keeps that.
    [[nodiscard]] bool FollowsNumber() const override { return true; }
    [[nodiscard]] bool KeepsNumber() const override { return true; }
    void ShowNumber(double fNumber) override;
    [[nodiscard]] double ShownNumber() const override;
    [[nodiscard]] bool HasPins() const override { return m_attr.nType == METER_SECTOR; }
    void ShowPin(uint32_t nPin, double fNumber) override;
    [[nodiscard]] double ShownPin(uint32_t nPin) const override;
    [[nodiscard]] bool CanMove() const override;
    double FullTurn(double* pfLow) const override;
    int TakeSet(const SetTexts& texts) override;
    void ResetValues() override;
    [[nodiscard]] bool ShowsTime() const override { return m_attr.nType == METER_CLOCK; }

    [[nodiscard]] const CMeter* Renderer() const { return m_drawn.pRenderer.get(); }

private:
    [[nodiscard]] MeterSettings Settings() const;
    [[nodiscard]] bool UsesFaceRegion() const;
    void PassToRenderer(const SelectorRow& row);
    void PassDraftToRenderer();
    void DropRenderer();
    [[nodiscard]] MeterPicture* PictureFor(uint32_t nFlags);
    [[nodiscard]] MeterPicture* Updated() const;
    [[nodiscard]] RECT RendererRect(const QelRect& rcQel, const RECT& rcFace) const;
    [[nodiscard]] int Miss() const;
    void PrepareToDraw(HDC hdc, const QelRect& rcQel, MeterPicture* pPicture);
    void PrepareToUpdate(CMeter* pRenderer, const LiveState* pState) const;
    void DrawFace(HDC hdc, const QelRect& rcQel, uint32_t nFlags);
    [[nodiscard]] bool HasOtherFace(MeterPicture* pPicture);
    void MakeFaceRegion(HDC hdc, const QelRect& rcQel, MeterPicture* pPicture);
    void MakeRenderer(const QelRect& rcQel, MeterPicture* pPicture) const;
    void PassPins(CMeter* pRenderer) const;
    void ForgetPins();
    void DrawValue(HDC hdc, uint32_t nFlags, CMeter* pRenderer, const LiveState* pState) const;
    void TakeForm();
    [[nodiscard]] bool MovesNumbers(const SelectorRow& row) const;

    // What values and settings read and write stands together, at the beginning.
    CSetWords m_words;
    uint32_t m_nValue = 0;
    float m_fValue = 0;
    bool m_bFloats = false; // the form that was set last
    bool m_bDrawn = false;  // once at least: until then there is no renderer to pass settings to
    QELMETERATTR m_attr{sizeof(QELMETERATTR), 0, 1, 0, 0, 100, 1, {0, 0, 10, 10, 0, 0, 0, 0, 0}, 0};
    uint32_t m_nProperties[QEL_SEL_COUNT]; // by selector
    float m_fBase = 0;
    int32_t m_nDraft = 0;
    uint32_t m_clrDraftFore = 0xFFFFFF;
    uint32_t m_clrDraftBack = 0x555555;
    MeterPicture m_drawn; // by QELDraw

    int32_t m_nPins[METER_PINS] = {};
    float m_fPins[METER_PINS] = {};
    uint32_t m_nLastPin = 0; // 0: none was set
};
