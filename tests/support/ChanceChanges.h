// Changes by chance to what a drawing shows, by every call that can make one.
#pragma once

#include "include/QELEngine.h"
#include "tests/support/Bitmap.h"
#include "tests/support/ChanceDrawing.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

class CChanceChanges {
public:
    CChanceChanges(HQELENGINE h, CTestDice* pDice) : m_h(h), m_dice(*pDice) {}

    std::string Make() // what was done
    {
        const int n = Below(38);
        const std::string id = AnyId();
        const int nWhat = Below(14);
        const double fValue = Below(2) ? Below(130) / 10.0 - 1 : Below(1000) / 10.0;
        const int nDone = n < 18   ? Live(n, id.c_str(), nWhat, fValue)
                          : n < 25 ? Older(n)
                          : n < 33 ? Edit(n)
                                   : Ask(n, id.c_str());
        return std::to_string(n) + " " + id + " " + std::to_string(nWhat) + " " +
               std::to_string(fValue) + " = " + std::to_string(nDone);
    }
    // Identifiers for elements that have none.
    void NameElements()
    {
        for (HQELELEM h : Elements()) {
            const char* const psz = QELGetElemId(m_h, h);
            if (m_dice.OneIn(2) && !(psz && *psz)) QELSetElemId(m_h, h, m_dice.Id().c_str());
        }
    }

private:
    int Below(int n) { return m_dice.Below(n); }
    DWORD Word(int n) { return static_cast<DWORD>(Below(n)); }
    std::string AnyId()
    {
        char szId[QEL_TEXT_SIZE];
        const DWORD n = Word(12);
        return QELGetLiveId(m_h, n, szId, sizeof szId, nullptr) ? szId : m_dice.Id();
    }
    int Live(int n, const char* psz, int nWhat, double fValue)
    {
        switch (n) {
        case 0:
        case 1:
        case 2:
        case 3:
            return QELSetValue(m_h, psz, fValue);
        case 4:
            return QELSetValue(m_h, psz, std::nan(""));
        case 5:
        case 6:
            return QELSetSelector(m_h, psz, Word(QEL_SEL_COUNT), Below(30));
        case 7:
            return QELSetSelector(m_h, psz, QEL_SEL_FACE_COLOR, m_dice.Color());
        case 8:
            return QELSetText(m_h, psz, nWhat % 3 ? "#.## kW" : "&x");
        case 9:
        case 10:
            return QELSetVisible(m_h, psz, nWhat % 2);
        case 11:
        case 12:
            return QELSetColor(m_h, psz, nWhat % 3, m_dice.Color());
        case 13:
            return QELSetQuality(m_h, psz, nWhat % 3);
        case 14:
            return QELSetEasing(m_h, psz, static_cast<DWORD>(nWhat % 2 * 100));
        case 15:
            return QELAdvance(m_h, 30);
        case 16:
            return QELSetPin(m_h, psz, nWhat % 5 + 1, fValue);
        default:
            return QELResetLive(m_h, nWhat ? psz : nullptr);
        }
    }
    int Older(int n)
    {
        const DWORD nId = Below(2) ? Word(4) : Word(3) * 40 + Word(2);
        switch (n) {
        case 18:
            return QELSetParam(m_h, Word(4), Below(2) ? m_dice.Color() : Word(38));
        case 19:
            return QELSetStatus(m_h, Word(8) ? Word(4) : 0xFFFFFFFF);
        case 20:
            return QELSetBlinkState(m_h, Below(2));
        case 21:
            return QELSetScaleStatus(m_h, nId, Word(14));
        case 22:
            return QELSetScaleStatusf(m_h, nId, static_cast<float>(Below(140)) / 10);
        case 23:
            return QELSetScaleParamf(m_h, nId, Word(QEL_SEL_COUNT), static_cast<float>(Below(20)));
        default:
            return QELSetScaleParam(m_h, nId, Word(QEL_SEL_COUNT), Word(20));
        }
    }
    std::vector<HQELELEM> Elements() // all but the root
    {
        std::vector<HQELELEM> all{QELGetRootElem(m_h)};
        for (std::size_t n = 0; n < all.size(); ++n)
            for (HQELELEM h = QELGetFirstChild(m_h, all[n]); h; h = QELGetNextElem(m_h, h))
                all.push_back(h);
        all.erase(all.begin());
        return all;
    }
    HQELELEM Any() // null for none
    {
        const std::vector<HQELELEM> all = Elements();
        return all.empty() ? nullptr : all[Word(static_cast<int>(all.size()))];
    }
    int Edit(int n)
    {
        const HQELELEM h = Any();
        if (!h) return QELCreateElem(m_h, QEL_TYPE_RECT, nullptr, nullptr) ? 1 : 0;
        switch (n) {
        case 25:
            return Shift(h);
        case 26:
            return Below(3) == 0 ? QELDeleteElem(m_h, h) : 0;
        case 27:
            return Below(3) == 0 && QELCopyElem(m_h, h) ? 1 : 0;
        case 28:
            return Move(h);
        case 29:
            return Below(4) ? SetRecord(h) : SetRoot();
        case 30:
            return Create(h);
        case 31:
            return Below(3) ? QELSetElemId(m_h, h, m_dice.Id().c_str()) : Resize();
        default:
            return SetRecord(h);
        }
    }
    int Shift(HQELELEM h)
    {
        RECT rc{};
        if (!QELGetElemRect(m_h, h, &rc)) return 0;
        ::OffsetRect(&rc, Below(21) - 10, Below(21) - 10);
        if (Below(3) == 0) rc.right += Below(9);
        return QELSetElemRect(m_h, h, &rc);
    }
    // To another parent, out of the picture, or what was out back in.
    int Move(HQELELEM h)
    {
        if (m_hOut) {
            const HQELELEM hBack = m_hOut;
            m_hOut = nullptr;
            return QELMoveElem(m_h, hBack, Below(2) ? h : QELGetRootElem(m_h), nullptr);
        }
        if (Below(2)) return QELMoveElem(m_h, h, Below(2) ? Any() : QELGetRootElem(m_h), nullptr);
        const int nDone = QELMoveElem(m_h, h, nullptr, nullptr);
        if (nDone) m_hOut = h;
        return nDone;
    }
    int SetRoot()
    {
        const SIZE size{140 + Below(60), 140 + Below(60)};
        return QELSetRefSize(m_h, &size);
    }
    int Resize()
    {
        if (Below(2)) return QELRotate(m_h, Below(4) * 90);
        const int nBy = Below(30);
        const RECT rc{nBy / 2, nBy / 3, CHANCE_SIDE - nBy, CHANCE_SIDE - nBy / 2};
        return QELSetQELRect(m_h, &rc);
    }
    int Create(HQELELEM hNear)
    {
        const HQELELEM hParent = Below(2) ? QELGetRootElem(m_h) : QELGetParentElem(m_h, hNear);
        const HQELELEM h = QELCreateElem(m_h, 1 + Below(QEL_TYPE_METER), hParent, nullptr);
        if (!h) return 0;
        const int x = Below(100), y = Below(100);
        const RECT rc{x, y, x + 20 + Below(40), y + 20 + Below(40)};
        QELSetElemRect(m_h, h, &rc);
        QELSetElemId(m_h, h, m_dice.Id().c_str());
        return SetRecord(h);
    }
    // Its own record with some of the words changed.
    int SetRecord(HQELELEM h)
    {
        alignas(8) unsigned char record[QEL_MAX_ATTR_SIZE]{};
        int nSize = 0;
        if (!QELGetElemAttr(m_h, h, record, &nSize)) return 0;
        const int nType = QELGetElemType(m_h, h);
        if (nType >= QEL_TYPE_TEXT && nType <= QEL_TYPE_POLYGON)
            ChangeShape(reinterpret_cast<QELSHAPEATTR*>(record), IsRound(nType));
        else if (nType == QEL_TYPE_METER)
            ChangeMeter(reinterpret_cast<QELMETERATTR*>(record));
        else if (nType == QEL_TYPE_SCALE)
            ChangeScale(reinterpret_cast<QELSCALEATTR*>(record));
        else if (nType == QEL_TYPE_STATUS)
            reinterpret_cast<QELWORDATTR*>(record)->nValue = Below(3);
        else if (nType == QEL_TYPE_DRAWRGN)
            reinterpret_cast<QELDRAWRGNATTR*>(record)->nFlags = m_dice.Keep();
        return QELSetElemAttr(m_h, h, record, nSize);
    }
    static bool IsRound(int nType) { return nType >= QEL_TYPE_CHORD && nType <= QEL_TYPE_CIRCLE; }
    void ChangeShape(QELSHAPEATTR* pShape, bool bRound)
    {
        switch (Below(7)) {
        case 0:
            pShape->nStyle = Word(6) | Word(4) << 16;
            break;
        case 1:
            pShape->nDraft = Below(38);
            break;
        case 2:
            pShape->clrA = m_dice.Color();
            pShape->clrPen = m_dice.Color();
            break;
        case 3:
            pShape->nFlags = m_dice.ShapeFlags(bRound);
            break;
        case 4:
            std::snprintf(pShape->szText, sizeof pShape->szText, "%d #.#", Below(1000));
            break;
        case 5:
            pShape->nPenStyle = Below(7);
            break;
        default:
            pShape->nPenWidth = Below(7);
        }
    }
    void ChangeMeter(QELMETERATTR* pMeter)
    {
        static constexpr LONG dial[] = {80, 80, 50, 10, 10, 150, 150, 45, 315};
        static constexpr LONG bar[] = {40, 30, 90, 140, 0, 0, 0, 0, 0};
        switch (Below(5)) {
        case 0:
            pMeter->nType = Below(11);
            std::copy_n(pMeter->nType < 4 ? bar : dial, 9, pMeter->nGeometry);
            break;
        case 1:
            pMeter->bUsePin = Below(2);
            pMeter->bUseScale = Below(2);
            break;
        case 2:
            pMeter->nMax = 5 + Below(30);
            pMeter->nMin = Below(4);
            break;
        case 3:
            pMeter->nId = Word(3) * 40;
            break;
        default:
            pMeter->nFlags = m_dice.Keep() | Word(2) << 24;
        }
    }
    void ChangeScale(QELSCALEATTR* pScale)
    {
        pScale->nStyle = Word(2);
        pScale->bPin = Below(2);
        pScale->bHide = Below(4) == 0;
        pScale->nId = Word(4);
        pScale->nMax = 5 + Below(30);
    }
    // What must change nothing of the picture, and what a window system adds.
    int Ask(int n, const char* pszId)
    {
        RECT rc{Below(CHANCE_SIDE), Below(CHANCE_SIDE), CHANCE_SIDE, CHANCE_SIDE};
        const POINT pt{rc.left, rc.top};
        char szId[QEL_TEXT_SIZE];
        switch (n) {
        case 33:
            rc.right = rc.left + 1 + Below(30);
            rc.bottom = rc.top + 1 + Below(30);
            return QELInvalidate(m_h, Below(5) ? &rc : nullptr);
        case 34:
            return Print();
        case 36:
            return QELSetPixelScale(m_h, m_dice.OneIn(2) ? 100 : 25 + Word(300));
        case 37:
            return QELSetSmooth(m_h, m_dice.OneIn(2) ? 0 : 2 + Below(3));
        default:
            QELGetDirtyRect(m_h, &rc);
            QELGetIdDrawRect(m_h, pszId, &rc);
            QELGetDrawGraphRect(m_h, &rc);
            return QELIdFromPoint(m_h, &pt, szId, sizeof szId);
        }
    }
    // Onto a surface of its own, fully or the moving parts, pressed, under a clip, in another size.
    int Print()
    {
        RECT rcBefore{};
        QELGetQELRect(m_h, &rcBefore);
        const RECT rcPrint{5, 5, 105, 125};
        const bool bOtherSize = m_dice.OneIn(3);
        if (bOtherSize) QELSetQELRect(m_h, &rcPrint);
        if (m_dice.OneIn(3)) ::IntersectClipRect(m_paper.Dc(), 10, 10, 60, 40);
        const int nDone = QELDraw(m_h, m_paper.Dc(), bOtherSize ? &rcPrint : &rcBefore, Word(4));
        ::SelectClipRgn(m_paper.Dc(), nullptr);
        if (bOtherSize) QELSetQELRect(m_h, &rcBefore);
        return nDone;
    }

    HQELENGINE m_h;
    CTestDice& m_dice;
    CTestBitmap m_paper{CHANCE_SIDE, CHANCE_SIDE};
    HQELELEM m_hOut = nullptr; // taken out of the picture
};
