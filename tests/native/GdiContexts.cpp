// The stand-in for GDI: device contexts, what is selected into them and the rest of their state.
#include "tests/native/GdiTable.h"

#include <utility>

namespace gdi {
namespace {

// What a memory device context holds at first.
HGDIOBJ FirstBitmap()
{
    static thread_local HGDIOBJ s_hBitmap = nullptr;
    if (!s_hBitmap) {
        Object bitmap;
        bitmap.nKind = Kind::Bitmap;
        bitmap.nStock = 0;
        bitmap.bitmap = {0, 1, 1, 2, 1, 1, nullptr};
        s_hBitmap = Insert(bitmap);
    }
    return s_hBitmap;
}

void CountSelected(const DcState& state, int nBy)
{
    for (const HGDIOBJ h : {state.hPen, state.hBrush, state.hFont, state.hBitmap})
        if (Object* pObject = Peek(h)) pObject->nSelected += nBy;
}

std::unique_ptr<Dc> NewDc()
{
    auto pDc = std::make_unique<Dc>();
    pDc->state.hPen = ::GetStockObject(BLACK_PEN);
    pDc->state.hBrush = ::GetStockObject(WHITE_BRUSH);
    pDc->state.hFont = ::GetStockObject(SYSTEM_FONT);
    pDc->state.hBitmap = FirstBitmap();
    CountSelected(pDc->state, 1);
    return pDc;
}

HGDIOBJ& SlotOf(DcState& state, Kind nKind)
{
    switch (nKind) {
    case Kind::Pen:
        return state.hPen;
    case Kind::Brush:
        return state.hBrush;
    case Kind::Font:
        return state.hFont;
    default:
        return state.hBitmap;
    }
}

const char* StockName(const Object& object)
{
    static constexpr const char* names[] = {
        "WHITE_BRUSH", "LTGRAY_BRUSH", "GRAY_BRUSH", "DKGRAY_BRUSH", "BLACK_BRUSH",
        "NULL_BRUSH",  "WHITE_PEN",    "BLACK_PEN",  "NULL_PEN",     "",
        "10",          "11",           "12",         "SYSTEM_FONT",  "DEVICE_DEFAULT_FONT"};
    return object.nStock < 15 ? names[object.nStock] : "font";
}

void RecordSelection(Dc& dc, HGDIOBJ hObject, const Object& object)
{
    if (!dc.bRecording || object.nKind == Kind::Bitmap) return;
    if (object.nStock != NOT_STOCK) {
        Record(dc, Text("SelectStock %s", StockName(object)));
        return;
    }
    static constexpr const char* kinds[] = {"Pen", "Brush", "Font"};
    const int nNumber = NumberInRecording(dc, hObject);
    Record(dc, Text("Select%s #%d", kinds[static_cast<int>(object.nKind)], nNumber));
}

// Sets one field of the state and gives back what it was before.
template <class T>
T Exchange(HDC hdc, T DcState::*pField, T value, const char* pszFunction, T onFailure)
{
    Dc* pDc = FindDc(hdc, pszFunction);
    return pDc ? std::exchange(pDc->state.*pField, value) : onFailure;
}

} // namespace

void Record(Dc& dc, const std::string& line)
{
    if (dc.bRecording) dc.calls.push_back(line);
}

int NumberInRecording(Dc& dc, HGDIOBJ hObject)
{
    const auto it = dc.numbers.find(hObject);
    if (it != dc.numbers.end()) return it->second;
    const Object& object = *Peek(hObject);
    if (object.nKind == Kind::Pen)
        Record(dc, Text("CreatePen style %u width %u color %06x", object.nStyle, object.nWidth,
                        object.clr));
    else if (object.nKind == Kind::Font)
        Record(dc, Text("CreateFont width %d height %d charset %d face %s", object.font.lfWidth,
                        object.font.lfHeight, object.font.lfCharSet, object.font.lfFaceName));
    else if (object.nStyle == BS_PATTERN || object.nStyle == BS_DIBPATTERNPT)
        Record(dc, "CreatePatternBrush");
    else
        Record(dc, Text("CreateBrush style %u color %06x", object.nStyle, object.clr));
    return dc.numbers[hObject] = ++dc.nNumbers;
}

HDC CreateRecordingDc()
{
    auto pDc = NewDc();
    pDc->bRecording = true;
    return InsertDc(std::move(pDc));
}

std::vector<std::string> EndRecording(HDC hdc)
{
    Dc* pDc = FindDc(hdc, "EndRecording");
    if (!pDc) return {};
    if (!pDc->saved.empty()) ReportMisuse("a recording ends with a saved state");
    std::vector<std::string> calls = std::move(pDc->calls);
    CountSelected(pDc->state, -1);
    for (const DcState& state : pDc->saved) CountSelected(state, -1);
    RemoveDc(hdc);
    return calls;
}

void SetPixelsPerUnit(HDC hdc, int nPixels)
{
    if (Dc* pDc = FindDc(hdc, "SetPixelsPerUnit")) pDc->nPixelsPerUnit = nPixels;
}

void ShowInWindow(HDC hdc, const Window& window)
{
    if (Dc* pDc = FindDc(hdc, "ShowInWindow")) pDc->window = window;
}

void LogPaintings(HDC hdc)
{
    Dc* pDc = FindDc(hdc, "LogPaintings");
    if (!pDc) return;
    pDc->bLogging = true;
    pDc->paintings.clear();
    pDc->layers.clear();
}

const std::vector<std::string>& Paintings(HDC hdc)
{
    static const std::vector<std::string> s_none;
    const Dc* pDc = FindDc(hdc, "Paintings");
    return pDc ? pDc->paintings : s_none;
}

const std::vector<Layer>& Layers(HDC hdc)
{
    static const std::vector<Layer> s_none;
    const Dc* pDc = FindDc(hdc, "Layers");
    return pDc ? pDc->layers : s_none;
}

std::string State(HDC hdc, unsigned nMayChange)
{
    const Dc* pDc = FindDc(hdc, "State");
    if (!pDc) return "gone";
    const DcState& s = pDc->state;
    std::string text = "selected";
    for (const HGDIOBJ h : {s.hPen, s.hBrush, s.hFont, s.hBitmap}) text += " " + Describe(h);
    text += Text(
        " mode %d rop %d poly %d arc %d align %u map %d graphics %d layout %u bounds %d at %d,%d "
        "viewport %d,%d patterns %d,%d extra %d corners %g saved %zu",
        s.nBkMode, s.nRop, s.nPolyFill, s.nArc, s.nAlign, s.nMapMode, s.nGraphicsMode, s.nLayout,
        pDc->bBounds, s.pt.x, s.pt.y, s.ptViewport.x, s.ptViewport.y, s.ptBrush.x, s.ptBrush.y,
        s.nExtra, static_cast<double>(s.fMiter), pDc->saved.size());
    if (!(nMayChange & MAY_CHANGE_COLORS)) text += Text(" back %06x text %06x", s.clrBk, s.clrText);
    return text + " clip " + (s.clip ? s.clip->Text() : "none");
}

CStateCheck::~CStateCheck()
{
    const std::string after = State(m_hdc, m_nMayChange);
    if (after != m_before)
        ReportMisuse("a device context was left changed: " + m_before + " -> " + after);
}

} // namespace gdi

using namespace gdi;

// ---- device contexts ----

HDC WINAPI CreateCompatibleDC(HDC hdc)
{
    if (hdc && !FindDc(hdc, "CreateCompatibleDC")) return nullptr;
    return TakeCreation() ? InsertDc(NewDc()) : nullptr;
}

BOOL WINAPI DeleteDC(HDC hdc)
{
    Dc* pDc = FindDc(hdc, "DeleteDC");
    if (!pDc) return FALSE;
    if (!pDc->saved.empty()) ReportMisuse("DeleteDC with a saved state");
    const DcState& s = pDc->state;
    for (const HGDIOBJ h : {s.hPen, s.hBrush, s.hFont, s.hBitmap}) {
        const Object* pObject = Peek(h);
        if (pObject && pObject->nStock == NOT_STOCK)
            ReportMisuse("DeleteDC with " + Describe(h) + " still selected");
    }
    CountSelected(s, -1);
    for (const DcState& state : pDc->saved) CountSelected(state, -1);
    RemoveDc(hdc);
    return TRUE;
}

INT WINAPI SaveDC(HDC hdc)
{
    Dc* pDc = FindDc(hdc, "SaveDC");
    if (!pDc || !TakeCall()) return 0;
    pDc->saved.push_back(pDc->state);
    CountSelected(pDc->state, 1);
    Record(*pDc, "Record 33");
    return static_cast<INT>(pDc->saved.size());
}

BOOL WINAPI RestoreDC(HDC hdc, INT nLevel)
{
    Dc* pDc = FindDc(hdc, "RestoreDC");
    if (!pDc) return FALSE;
    const auto nSaved = static_cast<INT>(pDc->saved.size());
    const INT nTo = nLevel < 0 ? nSaved + nLevel + 1 : nLevel;
    if (nTo < 1 || nTo > nSaved) {
        ReportMisuse(Text("RestoreDC %d with %d saved", nLevel, nSaved));
        return FALSE;
    }
    if (nTo != nSaved)
        ReportMisuse(Text("RestoreDC %d passes over saved states of %d", nTo, nSaved));
    while (static_cast<INT>(pDc->saved.size()) >= nTo) {
        CountSelected(pDc->state, -1);
        pDc->state = std::move(pDc->saved.back()); // its objects stay counted
        pDc->saved.pop_back();
    }
    Record(*pDc, "Record 34");
    return TRUE;
}

HGDIOBJ WINAPI SelectObject(HDC hdc, HGDIOBJ hObject)
{
    Dc* pDc = FindDc(hdc, "SelectObject");
    Object* pObject = FindAny(hObject, "SelectObject");
    if (!pDc || !pObject) return nullptr;
    if (pObject->nKind == Kind::Region)
        return reinterpret_cast<HGDIOBJ>(
            static_cast<uintptr_t>(::SelectClipRgn(hdc, static_cast<HRGN>(hObject))));
    HGDIOBJ& hSlot = SlotOf(pDc->state, pObject->nKind);
    if (pObject->nKind == Kind::Bitmap && pObject->nStock == NOT_STOCK && pObject->nSelected &&
        hSlot != hObject) {
        ReportMisuse("SelectObject of " + Describe(hObject) + ", which another has selected");
        return nullptr;
    }
    RecordSelection(*pDc, hObject, *pObject);
    if (Object* pPrev = Peek(hSlot)) --pPrev->nSelected;
    ++pObject->nSelected;
    return std::exchange(hSlot, hObject);
}

HGDIOBJ WINAPI GetCurrentObject(HDC hdc, UINT nType)
{
    Dc* pDc = FindDc(hdc, "GetCurrentObject");
    if (!pDc) return nullptr;
    switch (nType) {
    case OBJ_PEN:
    case OBJ_EXTPEN:
        return pDc->state.hPen;
    case OBJ_BRUSH:
        return pDc->state.hBrush;
    case OBJ_FONT:
        return pDc->state.hFont;
    case OBJ_BITMAP:
        return pDc->state.hBitmap;
    default:
        ReportMisuse(Text("GetCurrentObject of type %u", nType));
        return nullptr;
    }
}

// ---- the rest of the state ----

INT WINAPI SetBkMode(HDC hdc, INT nMode)
{
    Dc* pDc = FindDc(hdc, "SetBkMode");
    if (!pDc) return 0;
    if (nMode != OPAQUE && nMode != TRANSPARENT) {
        ReportMisuse(Text("SetBkMode %d", nMode));
        return 0;
    }
    Record(*pDc, Text("SetBkMode %d", nMode));
    return std::exchange(pDc->state.nBkMode, nMode);
}

COLORREF WINAPI SetBkColor(HDC hdc, COLORREF clr)
{
    if (Dc* pDc = FindDc(hdc, "SetBkColor")) Record(*pDc, Text("SetBkColor %06x", clr));
    return Exchange(hdc, &DcState::clrBk, clr, "SetBkColor", CLR_INVALID);
}

COLORREF WINAPI SetTextColor(HDC hdc, COLORREF clr)
{
    if (Dc* pDc = FindDc(hdc, "SetTextColor")) Record(*pDc, Text("SetTextColor %06x", clr));
    return Exchange(hdc, &DcState::clrText, clr, "SetTextColor", CLR_INVALID);
}

INT WINAPI SetArcDirection(HDC hdc, INT nDirection)
{
    Dc* pDc = FindDc(hdc, "SetArcDirection");
    if (!pDc) return 0;
    if (nDirection != AD_COUNTERCLOCKWISE && nDirection != AD_CLOCKWISE) {
        ReportMisuse(Text("SetArcDirection %d", nDirection));
        return 0;
    }
    Record(*pDc, Text("SetArcDirection %d", nDirection));
    return std::exchange(pDc->state.nArc, nDirection);
}

INT WINAPI SetPolyFillMode(HDC hdc, INT nMode)
{
    Dc* pDc = FindDc(hdc, "SetPolyFillMode");
    if (!pDc) return 0;
    if (nMode != ALTERNATE && nMode != WINDING) {
        ReportMisuse(Text("SetPolyFillMode %d", nMode));
        return 0;
    }
    Record(*pDc, "Record 19");
    return std::exchange(pDc->state.nPolyFill, nMode);
}

INT WINAPI SetROP2(HDC hdc, INT nRop)
{
    if (Dc* pDc = FindDc(hdc, "SetROP2")) Record(*pDc, "Record 20");
    return Exchange(hdc, &DcState::nRop, nRop, "SetROP2", 0);
}

UINT WINAPI SetTextAlign(HDC hdc, UINT nAlign)
{
    if (Dc* pDc = FindDc(hdc, "SetTextAlign")) Record(*pDc, "Record 22");
    return Exchange(hdc, &DcState::nAlign, nAlign, "SetTextAlign", static_cast<UINT>(GDI_ERROR));
}

INT WINAPI SetMapMode(HDC hdc, INT nMode)
{
    if (nMode >= MM_MIN && nMode <= MM_MAX)
        return Exchange(hdc, &DcState::nMapMode, nMode, "SetMapMode", 0);
    ReportMisuse(Text("SetMapMode %d", nMode));
    return 0;
}

INT WINAPI SetGraphicsMode(HDC hdc, INT nMode)
{
    if (nMode == GM_COMPATIBLE || nMode == GM_ADVANCED)
        return Exchange(hdc, &DcState::nGraphicsMode, nMode, "SetGraphicsMode", 0);
    ReportMisuse(Text("SetGraphicsMode %d", nMode));
    return 0;
}

DWORD WINAPI SetLayout(HDC hdc, DWORD nLayout)
{
    return Exchange(hdc, &DcState::nLayout, nLayout, "SetLayout", static_cast<DWORD>(GDI_ERROR));
}

// Turned on and off and asked, no more: there is no rectangle to add.
UINT WINAPI SetBoundsRect(HDC hdc, const RECT* prc, UINT nFlags)
{
    Dc* pDc = FindDc(hdc, "SetBoundsRect");
    if (!pDc) return 0;
    if (prc || (nFlags & ~(DCB_ENABLE | DCB_DISABLE)) || nFlags == (DCB_ENABLE | DCB_DISABLE)) {
        ReportMisuse(Text("SetBoundsRect with the flags %u", nFlags));
        return 0;
    }
    const UINT nWas = pDc->bBounds ? DCB_ENABLE : DCB_DISABLE;
    if (nFlags) pDc->bBounds = nFlags == DCB_ENABLE;
    return nWas | DCB_RESET;
}

BOOL WINAPI MoveToEx(HDC hdc, INT x, INT y, POINT* pPrev)
{
    Dc* pDc = FindDc(hdc, "MoveToEx");
    if (!pDc) return FALSE;
    Record(*pDc, Text("MoveTo %d,%d", x, y));
    if (pPrev) *pPrev = pDc->state.pt;
    pDc->state.pt = {x, y};
    return TRUE;
}

template <class T>
T Get(HDC hdc, T DcState::*pField, const char* pszFunction)
{
    const Dc* pDc = FindDc(hdc, pszFunction);
    return pDc ? pDc->state.*pField : T{};
}

int WINAPI GetBkMode(HDC hdc)
{
    return Get(hdc, &DcState::nBkMode, "GetBkMode");
}
COLORREF WINAPI GetBkColor(HDC hdc)
{
    return Get(hdc, &DcState::clrBk, "GetBkColor");
}
COLORREF WINAPI GetTextColor(HDC hdc)
{
    return Get(hdc, &DcState::clrText, "GetTextColor");
}
INT WINAPI GetROP2(HDC hdc)
{
    return Get(hdc, &DcState::nRop, "GetROP2");
}
INT WINAPI GetPolyFillMode(HDC hdc)
{
    return Get(hdc, &DcState::nPolyFill, "GetPolyFillMode");
}
INT WINAPI GetArcDirection(HDC hdc)
{
    return Get(hdc, &DcState::nArc, "GetArcDirection");
}
UINT WINAPI GetTextAlign(HDC hdc)
{
    return Get(hdc, &DcState::nAlign, "GetTextAlign");
}
INT WINAPI GetMapMode(HDC hdc)
{
    return Get(hdc, &DcState::nMapMode, "GetMapMode");
}
INT WINAPI GetGraphicsMode(HDC hdc)
{
    return Get(hdc, &DcState::nGraphicsMode, "GetGraphicsMode");
}
DWORD WINAPI GetLayout(HDC hdc)
{
    return FindDc(hdc, "GetLayout") ? Get(hdc, &DcState::nLayout, "GetLayout") : GDI_ERROR;
}
INT WINAPI GetStretchBltMode(HDC hdc)
{
    return FindDc(hdc, "GetStretchBltMode") ? BLACKONWHITE : 0;
}

BOOL WINAPI GetCurrentPositionEx(HDC hdc, POINT* pOut)
{
    if (!FindDc(hdc, "GetCurrentPositionEx") || !pOut) return FALSE;
    *pOut = Get(hdc, &DcState::pt, "GetCurrentPositionEx");
    return TRUE;
}

// Figures are in pixels here, and nobody moves their origin.
template <class Convert>
BOOL ConvertAll(HDC hdc, POINT* pPoints, INT nCount, const char* pszFunction, Convert convert)
{
    const Dc* pDc = FindDc(hdc, pszFunction);
    if (!pDc || !pPoints || nCount < 0 || pDc->nPixelsPerUnit == 0 || !TakeCall()) return FALSE;
    for (INT n = 0; n < nCount; ++n)
        pPoints[n] = {convert(pPoints[n].x, pDc->nPixelsPerUnit),
                      convert(pPoints[n].y, pDc->nPixelsPerUnit)};
    return TRUE;
}

BOOL WINAPI LPtoDP(HDC hdc, POINT* pPoints, INT nCount)
{
    return ConvertAll(hdc, pPoints, nCount, "LPtoDP", [](LONG n, LONG nScale) {
        return static_cast<LONG>(static_cast<DWORD>(n) * static_cast<DWORD>(nScale));
    });
}

BOOL WINAPI DPtoLP(HDC hdc, POINT* pPoints, INT nCount)
{
    return ConvertAll(hdc, pPoints, nCount, "DPtoLP",
                      [](LONG n, LONG nScale) { return n / nScale; });
}

BOOL WINAPI GetDCOrgEx(HDC hdc, POINT* pOut)
{
    const Dc* pDc = FindDc(hdc, "GetDCOrgEx");
    if (!pDc || !pOut) return FALSE;
    *pOut = pDc->window ? pDc->window->ptOrigin : POINT{0, 0};
    return TRUE;
}

BOOL ExchangePoint(HDC hdc, POINT DcState::*pField, POINT pt, POINT* pOut, const char* pszFunction)
{
    if (!FindDc(hdc, pszFunction)) return FALSE;
    const POINT ptBefore = Exchange(hdc, pField, pt, pszFunction, POINT{0, 0});
    if (pOut) *pOut = ptBefore;
    return TRUE;
}

BOOL WINAPI SetBrushOrgEx(HDC hdc, INT x, INT y, POINT* pOut)
{
    return ExchangePoint(hdc, &DcState::ptBrush, {x, y}, pOut, "SetBrushOrgEx");
}

BOOL WINAPI SetViewportOrgEx(HDC hdc, INT x, INT y, POINT* pOut)
{
    return ExchangePoint(hdc, &DcState::ptViewport, {x, y}, pOut, "SetViewportOrgEx");
}

BOOL WINAPI GetViewportOrgEx(HDC hdc, POINT* pOut)
{
    if (!FindDc(hdc, "GetViewportOrgEx") || !pOut) return FALSE;
    *pOut = Get(hdc, &DcState::ptViewport, "GetViewportOrgEx");
    return TRUE;
}

BOOL WINAPI SetMiterLimit(HDC hdc, FLOAT fLimit, FLOAT* pOut)
{
    if (!FindDc(hdc, "SetMiterLimit")) return FALSE;
    if (fLimit < 1) ReportMisuse("SetMiterLimit below 1");
    const FLOAT fBefore = Exchange(hdc, &DcState::fMiter, fLimit, "SetMiterLimit", FLOAT{0});
    if (pOut) *pOut = fBefore;
    return TRUE;
}

INT WINAPI SetTextCharacterExtra(HDC hdc, INT nExtra)
{
    return Exchange(hdc, &DcState::nExtra, nExtra, "SetTextCharacterExtra", INT{0});
}

INT WINAPI GetTextCharacterExtra(HDC hdc)
{
    return Get(hdc, &DcState::nExtra, "GetTextCharacterExtra");
}

// Screens and their bitmaps are all that there is.
INT WINAPI GetDeviceCaps(HDC hdc, INT nIndex)
{
    if (nIndex != TECHNOLOGY) ReportMisuse(Text("GetDeviceCaps of %d", nIndex));
    return FindDc(hdc, "GetDeviceCaps") ? DT_RASDISPLAY : 0;
}

// A window has the handle of the device context that is shown in it.
HWND WINAPI WindowFromDC(HDC hdc)
{
    const Dc* pDc = FindDc(hdc, "WindowFromDC");
    return pDc && pDc->window && TakeCall() ? reinterpret_cast<HWND>(hdc) : nullptr;
}

BOOL WINAPI ClientToScreen(HWND hWnd, POINT* pPoint)
{
    const Dc* pDc = FindDc(reinterpret_cast<HDC>(hWnd), "ClientToScreen");
    if (!pDc || !pDc->window || !TakeCall()) return FALSE;
    *pPoint = {pPoint->x + pDc->window->rcClient.left, pPoint->y + pDc->window->rcClient.top};
    return TRUE;
}

BOOL WINAPI GetClientRect(HWND hWnd, RECT* prc)
{
    const Dc* pDc = FindDc(reinterpret_cast<HDC>(hWnd), "GetClientRect");
    if (!pDc || !pDc->window || !TakeCall()) return FALSE;
    const RECT& rc = pDc->window->rcClient;
    *prc = {0, 0, rc.right - rc.left, rc.bottom - rc.top};
    return TRUE;
}

BOOL WINAPI GetBrushOrgEx(HDC hdc, POINT* pOut)
{
    if (!FindDc(hdc, "GetBrushOrgEx") || !pOut) return FALSE;
    *pOut = Get(hdc, &DcState::ptBrush, "GetBrushOrgEx");
    return TRUE;
}

// Nothing is painted.
COLORREF WINAPI GetPixel(HDC hdc, INT, INT)
{
    return FindDc(hdc, "GetPixel") ? RGB(0, 0, 0) : CLR_INVALID;
}
