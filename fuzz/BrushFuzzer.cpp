// Fuzzes what a host may use without an engine: hatch brushes, gradient descriptors, curves, and
// the functions of numbers behind them.
#include "fuzz/Host.h"
#include "fuzz/LargeBlocks.h"

#include "brush/Gradient.h"

#include <algorithm>

namespace {

constexpr int MAX_OPERATIONS = 60;
constexpr DWORD MAX_CURVE_POINTS = 60;

// Any rectangle, and more often one whose gradient is worth making.
RECT RectFrom(CInput& input)
{
    RECT rc{input.Number(), input.Number(), 0, 0};
    if (input.Below(4) == 0) {
        rc.right = input.Number();
        rc.bottom = input.Number();
    } else {
        rc.right = static_cast<LONG>(static_cast<DWORD>(rc.left) + input.Below(90));
        rc.bottom = static_cast<LONG>(static_cast<DWORD>(rc.top) + input.Below(90));
    }
    return rc;
}

bool IsKind(int nKind)
{
    return nKind >= 0 && nKind < GRADIENT_KINDS;
}

void CheckDraft(CInput& input)
{
    const auto nStyle = static_cast<tagDRAFTSTYLE>(input.Number());
    const bool bGradient = nStyle >= DRAFT_GRADIENT && nStyle < DRAFT_COUNT;
    CQELDraft draft(nStyle);
    for (int n = 0; n < 3; ++n) {
        RECT rc = RectFrom(input);
        const RECT rcBefore = rc;
        const DWORD clr1 = input.Word();
        const DWORD clr2 = input.Word();
        HBRUSH hBrush = reinterpret_cast<HBRUSH>(&rc);
        const int nResult = draft.GetDraftBrush(hBrush, &rc, clr1, clr2);
        FUZZ_CHECK((nResult != 0) == (hBrush != nullptr));
        FUZZ_CHECK(::EqualRect(&rc, &rcBefore));
        if (nStyle < 0 || nStyle >= DRAFT_COUNT || (bGradient && ::IsRectEmpty(&rc)))
            FUZZ_CHECK(!nResult);
        else if (!bGradient)
            FUZZ_CHECK(nResult);
        HBRUSH hAgain = nullptr;
        FUZZ_CHECK(draft.GetDraftBrush(hAgain, &rc, clr1, clr2) == nResult && hAgain == hBrush);
        HBRUSH hNone = hBrush;
        const int nWithout = draft.GetDraftBrush(hNone, nullptr, clr1, clr2);
        FUZZ_CHECK(nWithout == (bGradient ? 0 : nResult));
        FUZZ_CHECK(hNone == (nWithout ? hBrush : nullptr));
    }
}

// Copies share the objects of their source; before there are any, each makes its own.
void CheckCopies(CInput& input)
{
    const CQELDraft draft(static_cast<tagDRAFTSTYLE>(input.Below(40)));
    CQELDraft copy(draft);
    CQELDraft assigned;
    assigned = draft;
    RECT rc{0, 0, 20, 10};
    HBRUSH hBrush = nullptr;
    HBRUSH hOther = nullptr;
    const int nResult = copy.GetDraftBrush(hBrush, &rc, 1, 2);
    FUZZ_CHECK(assigned.GetDraftBrush(hOther, &rc, 1, 2) == nResult);
    FUZZ_CHECK(!nResult || hBrush != hOther);
}

void CheckGradient(CInput& input)
{
    const RECT rc = RectFrom(input);
    const int nKind = input.Below(4) ? static_cast<int>(input.Below(16)) - 1 : input.Number();
    const HQELGRADIENT h = QELCreateGradientDescriptor(&rc, nKind, input.Word(), input.Word());
    FUZZ_CHECK((h != nullptr) == (IsKind(nKind) && !::IsRectEmpty(&rc)));
    FUZZ_CHECK(!QELCreateGradientDescriptor(nullptr, nKind, 0, 0));
    if (!h) {
        FUZZ_CHECK(!QELGetGradientBrush(h) && !QELCloseGradientDescriptor(h));
        return;
    }
    const HBRUSH hBrush = QELGetGradientBrush(h);
    FUZZ_CHECK(QELGetGradientBrush(h) == hBrush);
    FUZZ_CHECK(QELCloseGradientDescriptor(h));
    FUZZ_CHECK(!QELCloseGradientDescriptor(h) && !QELGetGradientBrush(h));
    const HQELGRADIENT hNext = QELCreateGradientDescriptor(&rc, nKind, 0, 0);
    FUZZ_CHECK(hNext && hNext != h); // a number is not given out again
    FUZZ_CHECK(QELCloseGradientDescriptor(hNext));
}

void CheckFill(CInput& input, HDC hdc)
{
    const RECT rc = RectFrom(input);
    CGradient* pGradient = CGradient::Create(&rc, static_cast<int>(input.Below(GRADIENT_KINDS)),
                                             input.Word(), input.Word());
    if (!pGradient) return;
    const int32_t nWidth = input.Number();
    const int32_t nHeight = input.Number();
    const int nResult = pGradient->Fill(hdc, input.Number(), input.Number(), nWidth, nHeight);
    FUZZ_CHECK(nResult == (nWidth < 1 || nHeight < 1 || pGradient->Brush() ? 1 : 0));
    delete pGradient;
}

// The ramps stay between the two colours, and begin with the first.
void CheckRamps(CInput& input)
{
    const int32_t p = input.Number();
    const int32_t nOrigin = input.Number();
    const int32_t nLength = input.Number();
    const int32_t a = input.Byte();
    const int32_t b = input.Byte();
    for (const auto pfnRamp : {GradientRamp, GradientThereAndBack}) {
        const int32_t n = pfnRamp(p, nOrigin, nLength, a, b);
        FUZZ_CHECK(n >= std::min(a, b) && n <= std::max(a, b));
        FUZZ_CHECK(pfnRamp(nOrigin, nOrigin, nLength, a, b) == a);
        if (nLength < 1) FUZZ_CHECK(n == a);
    }
}

void CheckCurves(CInput& input, HDC hdc)
{
    std::vector<POINT> points;
    for (uint32_t nLeft = input.Below(MAX_CURVE_POINTS); nLeft; --nLeft)
        points.push_back({input.Number(), input.Number()});
    const auto nCount = static_cast<DWORD>(points.size());
    const POINT* pPoints = points.empty() ? nullptr : points.data();
    FUZZ_CHECK(QELDrawCurve(hdc, pPoints, nCount) == 0);
    FUZZ_CHECK(QELDrawCurve(nullptr, pPoints, nCount) == 0 && QELDrawCurve(hdc, nullptr, 9) == 0);
    FUZZ_CHECK(!QELDrawBezier(hdc, nullptr, nCount));
    if (pPoints) QELDrawBezier(hdc, pPoints, nCount);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pData, std::size_t nSize)
{
    CInput input(pData, nSize);
    const CHostWorld world;
    const CLittleMemory little;
    const CHostDc dc;
    for (int n = 0; n < MAX_OPERATIONS && !input.IsAtEnd(); ++n) {
        switch (input.Below(6)) {
        case 0:
            CheckDraft(input);
            break;
        case 1:
            CheckCopies(input);
            break;
        case 2:
            CheckGradient(input);
            break;
        case 3:
            CheckFill(input, dc.Get());
            break;
        case 4:
            CheckRamps(input);
            break;
        default:
            CheckCurves(input, dc.Get());
            break;
        }
        dc.CheckState();
    }
    return 0;
}
