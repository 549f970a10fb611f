// One host for every compiler: it uses the exported class in all the ways that C++ code does, and
// calls every exported function. The tests build it with MinGW and with the Microsoft ABI, in both
// word sizes, and run it against the same DLL. It prints what fails; its exit status is the number
// of failures.
#include <windows.h>

#include "include/QELEngine.h"
#include "tests/abi/Freestanding.h"

namespace {

int g_nFailures = 0;
int g_nChecks = 0;

unsigned Length(const char* pszText)
{
    unsigned nLength = 0;
    while (pszText[nLength]) ++nLength;
    return nLength;
}

void Print(const char* pszText)
{
    DWORD nWritten = 0;
    ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), pszText, Length(pszText), &nWritten, nullptr);
}

void PrintNumber(int nValue)
{
    char szText[16];
    int nAt = sizeof szText - 1;
    szText[nAt] = 0;
    do szText[--nAt] = static_cast<char>('0' + nValue % 10);
    while ((nValue /= 10) != 0 && nAt > 0);
    Print(szText + nAt);
}

void Check(bool bHolds, const char* pszWhat)
{
    ++g_nChecks;
    if (bHolds) return;
    ++g_nFailures;
    Print("FAILED: ");
    Print(pszWhat);
    Print("\r\n");
}

// A bitmap of 16 by 16 pixels to draw on.
class CCanvas {
public:
    CCanvas() : m_hdc(::CreateCompatibleDC(nullptr))
    {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = 16;
        info.bmiHeader.biHeight = -16;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_hBitmap = ::CreateDIBSection(m_hdc, &info, DIB_RGB_COLORS, &m_pBits, nullptr, 0);
        m_hPrev = ::SelectObject(m_hdc, m_hBitmap);
    }
    ~CCanvas()
    {
        ::SelectObject(m_hdc, m_hPrev);
        ::DeleteObject(m_hBitmap);
        ::DeleteDC(m_hdc);
    }
    CCanvas(const CCanvas&) = delete;
    CCanvas& operator=(const CCanvas&) = delete;
    HDC Dc() const { return m_hdc; }
    unsigned At(int nX, int nY) const // 0xrrggbb
    {
        ::GdiFlush();
        return static_cast<const unsigned*>(m_pBits)[nY * 16 + nX] & 0xFFFFFF;
    }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev;
    void* m_pBits = nullptr;
};

int g_nDestroyed = 0;

class CHostDraft : public CQELDraft {
public:
    explicit CHostDraft(tagDRAFTSTYLE nStyle) : CQELDraft(nStyle) {}
    ~CHostDraft() override { g_nDestroyed += m_nOwn; }
    CHostDraft(const CHostDraft&) = default;
    CHostDraft& operator=(const CHostDraft&) = default;
    int Own() const { return m_nOwn; }

private:
    int m_nOwn = 7;
};

struct Member {
    int nBefore = 11;
    CQELDraft draft{DRAFT_DOTS};
    int nAfter = 12;
};

bool IsBrush(CQELDraft& draft, RECT* prc)
{
    HBRUSH hBrush = nullptr;
    return draft.GetDraftBrush(hBrush, prc, RGB(255, 0, 0), RGB(0, 0, 255)) && hBrush &&
           ::GetObjectType(hBrush) == OBJ_BRUSH;
}

void TestLayout()
{
    Check(sizeof(CQELDraft) == (sizeof(void*) == 8 ? 56 : 36), "the size of the class");
    CQELDraft draft(DRAFT_DIAGONAL_UP);
    const auto* pBytes = reinterpret_cast<const unsigned char*>(&draft);
    Check(*reinterpret_cast<const int*>(pBytes + sizeof(void*)) == DRAFT_DIAGONAL_UP,
          "the style stands after the table of virtual functions");
    Check(*reinterpret_cast<void* const*>(pBytes) != nullptr, "there is a virtual table");
    const unsigned short* pBits = &CQELDraft::m_byColorsBits[0][0];
    Check(sizeof CQELDraft::m_byColorsBits == 160 && pBits[9 * 8] == 0xF0 && pBits[2 * 8] == 0xAA,
          "the hatches are reached");
    Check(CQELDraft::m_nDefDraft == DRAFT_SOLID_TEXT, "the default style is reached");
}

void TestConstruction()
{
    RECT rc = {0, 0, 16, 16};
    CQELDraft plain;
    CQELDraft styled(DRAFT_VERTICAL);
    const CQELDraft converted = DRAFT_HORIZONTAL;
    CQELDraft copied(converted);
    Check(IsBrush(plain, &rc) && IsBrush(styled, &rc) && IsBrush(copied, &rc), "stack objects");
    CQELDraft assigned;
    CQELDraft& result = (assigned = copied);
    Check(&result == &assigned, "assignment gives the object");
    auto* pMade = new CQELDraft(DRAFT_CHECKER_4);
    Check(IsBrush(*pMade, &rc), "an object of its own");
    delete pMade;
    auto* pMany = new CQELDraft[3];
    Check(IsBrush(pMany[0], &rc) && IsBrush(pMany[2], &rc), "an array");
    delete[] pMany;
    Member member;
    Check(IsBrush(member.draft, &rc) && member.nBefore == 11 && member.nAfter == 12, "a member");
}

void TestDerivation()
{
    RECT rc = {0, 0, 16, 16};
    g_nDestroyed = 0;
    {
        CHostDraft onStack(DRAFT_GRADIENT);
        CHostDraft copy(onStack);
        Check(IsBrush(copy, &rc) && copy.Own() == 7, "a derived object");
    }
    Check(g_nDestroyed == 14, "derived objects on the stack are destroyed");
    CQELDraft* pBase = new CHostDraft(DRAFT_DOTS);
    Check(IsBrush(*pBase, &rc), "a derived object through its base");
    delete pBase;
    Check(g_nDestroyed == 21, "the virtual destructor is the derived one");
    pBase = new CQELDraft(DRAFT_DOTS);
    delete pBase;
    Check(g_nDestroyed == 21, "the base's own destructor is called for it");
    Check(::HeapValidate(::GetProcessHeap(), 0, nullptr) != FALSE, "the heap is whole");
}

void TestDrawing()
{
    RECT rc = {0, 0, 16, 16};
    for (int nStyle = 0; nStyle < DRAFT_COUNT; ++nStyle) {
        CQELDraft draft(static_cast<tagDRAFTSTYLE>(nStyle));
        Check(IsBrush(draft, &rc), "every style has a brush");
    }
    CQELDraft none(DRAFT_COUNT);
    HBRUSH hBrush = nullptr;
    Check(!none.GetDraftBrush(hBrush, &rc, 0, 0) && !hBrush, "an unknown style has none");

    const CCanvas canvas;
    CQELDraft draft(DRAFT_CHECKER_4);
    draft.GetDraftBrush(hBrush, &rc, RGB(255, 0, 0), RGB(0, 0, 255));
    ::SetTextColor(canvas.Dc(), RGB(255, 0, 0));
    ::SetBkColor(canvas.Dc(), RGB(0, 0, 255));
    ::FillRect(canvas.Dc(), &rc, hBrush);
    // A set bit of the hatch shows the background colour, the leftmost pixel being the highest bit.
    for (int n = 0; n < 8; ++n) {
        const bool bSet = (CQELDraft::m_byColorsBits[DRAFT_CHECKER_4][2] & (0x80 >> n)) != 0;
        Check(canvas.At(n, 2) == (bSet ? 0x0000FFU : 0xFF0000U), "a hatch on a bitmap");
    }
}

#if defined(_MSC_VER)
// The type information that stands before the first slot of the virtual table: hosts' runtimes read
// the type's name there.
void TestTypeInformation()
{
    const CQELDraft draft;
    struct Locator {
        unsigned nSignature;
        unsigned nOffset;
        unsigned nConstruction;
        unsigned nType;
    };
    const auto* const* ppTable = *reinterpret_cast<const Locator* const* const*>(&draft);
    const Locator* pLocator = ppTable[-1];
    Check(pLocator->nSignature == (sizeof(void*) == 8 ? 1U : 0U), "the locator's form");
    const char* pszType = nullptr;
    if (sizeof(void*) == 8) {
        const unsigned nSelf = reinterpret_cast<const unsigned*>(pLocator)[5];
        pszType = reinterpret_cast<const char*>(pLocator) - nSelf + pLocator->nType;
    } else {
        pszType = reinterpret_cast<const char*>(static_cast<SIZE_T>(pLocator->nType));
    }
    const char* pszName = pszType + 2 * sizeof(void*);
    const char* pszExpected = ".?AVCQELDraft@@";
    unsigned n = 0;
    while (pszExpected[n] && pszExpected[n] == pszName[n]) ++n;
    Check(!pszExpected[n] && !pszName[n], "the type's name");
}
#endif

const char* const PATH = "abi_host.qel";

void TestFunctions()
{
    const CCanvas canvas;
    RECT rc = {0, 0, 16, 16};
    RECT rcOut = {};
    SIZE size = {};
    DWORD nValue = 0;
    float fValue = 0;
    HQELENGINE hEngine = CreateQELEngine();
    Check(QELNewFile(hEngine) == 1, "QELNewFile");
    HQELELEM hRoot = QELGetRootElem(hEngine);
    HQELELEM hRect = QELCreateElem(hEngine, QEL_TYPE_RECT, nullptr, nullptr);
    HQELELEM hMeter = QELCreateElem(hEngine, QEL_TYPE_METER, hRoot, hRect);
    HQELELEM hRegion = QELCreateElem(hEngine, QEL_TYPE_DRAWRGN, hRoot, hMeter);
    HQELELEM hStatus = QELCreateElem(hEngine, QEL_TYPE_STATUS, hRoot, hRegion);
    Check(hRoot && hRect && hMeter && hRegion && hStatus, "QELCreateElem");
    HQELELEM hCopy = QELCopyElem(hEngine, hRect);
    Check(hCopy && QELGetNextElem(hEngine, hRect) == hCopy, "QELCopyElem, QELGetNextElem");
    Check(QELGetPrevElem(hEngine, hCopy) == hRect, "QELGetPrevElem");
    Check(QELGetParentElem(hEngine, hCopy) == hRoot, "QELGetParentElem");
    Check(QELGetFirstChild(hEngine, hRoot) == hRect, "QELGetFirstChild");
    Check(QELGetLastChild(hEngine, hRoot) == hStatus, "QELGetLastChild");
    Check(QELMoveElem(hEngine, hCopy, hRoot, hStatus) == 1, "QELMoveElem");
    Check(QELDeleteElem(hEngine, hCopy) == 1, "QELDeleteElem");
    Check(QELGetElemType(hEngine, hMeter) == QEL_TYPE_METER, "QELGetElemType");
    Check(QELSetElemId(hEngine, hRect, "a") == 1, "QELSetElemId");
    const char* pszId = QELGetElemId(hEngine, hRect);
    Check(pszId && pszId[0] == 'a' && !pszId[1], "QELGetElemId");
    QELSHAPEATTR attr = {};
    int nSize = 0;
    Check(QELGetElemAttr(hEngine, hRect, &attr, &nSize) == 1 && nSize == 424, "QELGetElemAttr");
    attr.nStyle = QEL_STYLE_FILL;
    attr.clrB = RGB(0, 128, 0);
    attr.nPenWidth = 0;
    Check(QELSetElemAttr(hEngine, hRect, &attr, sizeof attr) == 1, "QELSetElemAttr");
    const RECT rcWhole = {0, 0, 10, 10};
    Check(QELSetElemRect(hEngine, hRect, &rcWhole) == 1, "QELSetElemRect");
    Check(QELGetElemRect(hEngine, hRect, &rcOut) == 1 && rcOut.right > 0, "QELGetElemRect");
    Check(QELGetRefSize(hEngine, &size) == 1 && size.cx == 50, "QELGetRefSize");
    const SIZE ref = {10, 10};
    Check(QELSetRefSize(hEngine, &ref) == 1, "QELSetRefSize");
    Check(QELSetQELRect(hEngine, &rc) == 1, "QELSetQELRect");
    Check(QELGetQELRect(hEngine, &rcOut) == 1 && rcOut.bottom == 16, "QELGetQELRect");
    Check(QELGetDrawGraphRect(hEngine, &rcOut) == 1, "QELGetDrawGraphRect");
    Check(QELSetBlinkState(hEngine, 1) == 1 && QELSetBlinkState(hEngine, 0) == 1,
          "QELSetBlinkState");
    Check(QELSetStatus(hEngine, 5) == 1, "QELSetStatus");
    Check(QELGetStatus(hEngine, &nValue) == 1 && nValue == 5, "QELGetStatus");
    Check(QELSetParam(hEngine, QEL_PARAM_DRAFT, 3) == 1, "QELSetParam");
    Check(QELGetParam(hEngine, QEL_PARAM_DRAFT, &nValue) == 1 && nValue == 3, "QELGetParam");
    Check(QELParamsSupported(hEngine) != 0, "QELParamsSupported");
    Check(QELSetScaleParam(hEngine, 0, QEL_SEL_MAX, 100) == 1, "QELSetScaleParam");
    Check(QELGetScaleParam(hEngine, 0, QEL_SEL_MAX, &nValue) == 1 && nValue == 100,
          "QELGetScaleParam");
    Check(QELSetScaleParamf(hEngine, 0, QEL_SEL_BASE_VALUE, 2.5F) == 1, "QELSetScaleParamf");
    Check(QELGetScaleParamf(hEngine, 0, QEL_SEL_BASE_VALUE, &fValue) == 1 && fValue == 2.5F,
          "QELGetScaleParamf");
    Check(QELSetScaleStatus(hEngine, 0, 42) == 1, "QELSetScaleStatus");
    Check(QELGetScaleStatus(hEngine, 0, &nValue) == 1 && nValue == 42, "QELGetScaleStatus");
    Check(QELSetScaleStatusf(hEngine, 0, 1.25F) == 1, "QELSetScaleStatusf");
    Check(QELGetScaleStatusf(hEngine, 0, &fValue) == 1 && fValue == 1.25F, "QELGetScaleStatusf");
    // Its numbers would lie over the pixel that is looked at, in some faces.
    Check(QELSetScaleParam(hEngine, 0, QEL_SEL_SHOW_LABELS, 0) == 1, "QELSetScaleParam, labels");
    Check(QELDraw(hEngine, canvas.Dc(), &rc, QEL_DRAW_FULL) == 1, "QELDraw");
    Check(canvas.At(1, 1) == 0x008000, "the drawing is on the bitmap");
    Check(QELRotate(hEngine, 90) == 1, "QELRotate");
    Check(QELSaveFile(hEngine, PATH) == 1, "QELSaveFile");
    Check(QELCloseFile(hEngine) == 1, "QELCloseFile");
    Check(QELGetType(hEngine) == 3 && !QELGetName(hEngine), "QELGetType, QELGetName");
    Check(QELOpenFile(hEngine, PATH) == 1, "QELOpenFile");
    Check(QELOpenFileU(hEngine, L"abi_host.qel") == 1, "QELOpenFileU");
    ::DeleteFileA(PATH);

    HQELGRADIENT hGradient = QELCreateGradientDescriptor(&rc, 0, RGB(0, 0, 0), RGB(255, 255, 255));
    Check(hGradient && QELGetGradientBrush(hGradient), "QELCreateGradientDescriptor and its brush");
    Check(QELCloseGradientDescriptor(hGradient) == 1, "QELCloseGradientDescriptor");
    const POINT points[] = {{0, 8}, {4, 0}, {8, 16}, {15, 8}};
    Check(QELDrawBezier(canvas.Dc(), points, 4) != 0, "QELDrawBezier");
    Check(QELDrawCurve(canvas.Dc(), points, 4) == 0, "QELDrawCurve");
    Check(DestroyQELEngine(hEngine) == 1, "DestroyQELEngine");
    Check(QELGetVersion() >= 0x10000, "QELGetVersion");
    Check(QELShowOnly(0) == 1, "QELShowOnly");
}

} // namespace

extern "C" int main()
{
    TestLayout();
    TestConstruction();
    TestDerivation();
    TestDrawing();
#if defined(_MSC_VER)
    TestTypeInformation();
#endif
    TestFunctions();
    PrintNumber(g_nChecks - g_nFailures);
    Print(" passed, ");
    PrintNumber(g_nFailures);
    Print(" failed\r\n");
    return g_nFailures;
}
