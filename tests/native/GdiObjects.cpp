// The stand-in for GDI: the life of pens, brushes, fonts and bitmaps, misuse and faults.
#include "tests/native/GdiTable.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace gdi {
namespace {

constexpr uint64_t FIRST_HANDLE = 0x1000000;
constexpr uint64_t HANDLE_STEP = 16; // the low bits hold the kind
constexpr int STOCK_COUNT = 20;
constexpr std::size_t MOST_TILE_PIXELS = 1 << 17; // of a larger pattern no pixels are kept

struct Table {
    std::unordered_map<uint64_t, std::unique_ptr<Object>> objects;
    std::unordered_map<uint64_t, std::unique_ptr<Dc>> dcs;
    uint64_t nNext = 1;
    HGDIOBJ stock[STOCK_COUNT] = {};
    int nCreations = 0;
    int nCalls = 0;
    int nCallToFail = 0;
    int nFailAt = 0;
    bool bFailAllAfter = false;
    int nFaultsOff = 0;
    int nExtentsOff = 0;
};

Table& TheTable()
{
    // Each thread has objects of its own. Destroyed at its end, so that it is no leak.
    static thread_local Table s_table;
    return s_table;
}

void PrintAndAbort(const std::string& what)
{
    std::fprintf(stderr, "GDI misuse: %s\n", what.c_str());
    std::abort();
}

MisuseHandler g_pfnMisuse = PrintAndAbort;

uint64_t NumberOf(HGDIOBJ hObject)
{
    return reinterpret_cast<uint64_t>(hObject);
}

HGDIOBJ MakeHandle(Kind nKind, uint64_t nSerial)
{
    return reinterpret_cast<HGDIOBJ>(FIRST_HANDLE + nSerial * HANDLE_STEP +
                                     static_cast<uint64_t>(nKind));
}

bool WasHandle(uint64_t n)
{
    return n >= FIRST_HANDLE && (n - FIRST_HANDLE) / HANDLE_STEP < TheTable().nNext &&
           (n - FIRST_HANDLE) % HANDLE_STEP <= static_cast<uint64_t>(Kind::Dc);
}

Object StockObject(int nIndex)
{
    Object object;
    object.nStock = nIndex;
    static constexpr COLORREF greys[] = {0xFFFFFF, 0xC0C0C0, 0x808080, 0x404040, 0};
    if (nIndex <= BLACK_BRUSH) {
        object.nKind = Kind::Brush;
        object.clr = greys[nIndex];
    } else if (nIndex == NULL_BRUSH) {
        object.nKind = Kind::Brush;
        object.nStyle = BS_NULL;
    } else if (nIndex <= NULL_PEN) {
        object.nKind = Kind::Pen;
        object.nStyle = nIndex == NULL_PEN ? PS_NULL : PS_SOLID;
        object.clr = nIndex == WHITE_PEN ? 0xFFFFFF : 0;
    } else {
        object.nKind = Kind::Font;
        object.font.lfHeight = 16;
        object.font.lfWidth = 8;
        object.font.lfWeight = FW_NORMAL;
        std::strcpy(object.font.lfFaceName, "System");
    }
    return object;
}

std::size_t HashOf(const void* pData, std::size_t nSize)
{
    return std::hash<std::string_view>{}({static_cast<const char*>(pData), nSize});
}

std::shared_ptr<const Tile> TileOf(int nWidth, int nHeight,
                                   const std::function<COLORREF(int, int)>& at)
{
    auto pTile = std::make_shared<Tile>();
    pTile->nWidth = nWidth;
    pTile->nHeight = nHeight;
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x) pTile->pixels.push_back(at(x, y));
    return pTile;
}

HGDIOBJ Made(const Object& object)
{
    return TakeCreation() ? Insert(object) : nullptr;
}

} // namespace

COLORREF Tile::At(int x, int y) const
{
    const int nX = (x % nWidth + nWidth) % nWidth;
    const int nY = (y % nHeight + nHeight) % nHeight;
    return pixels[static_cast<std::size_t>(nY) * static_cast<std::size_t>(nWidth) +
                  static_cast<std::size_t>(nX)];
}

// ---- misuse ----

MisuseHandler SetMisuseHandler(MisuseHandler pfnHandler)
{
    const MisuseHandler pfnPrev = g_pfnMisuse;
    g_pfnMisuse = pfnHandler ? pfnHandler : PrintAndAbort;
    return pfnPrev;
}

void ReportMisuse(const std::string& what)
{
    g_pfnMisuse(what);
}

std::string Text(const char* pszFormat, ...)
{
    char sz[700];
    va_list args;
    va_start(args, pszFormat);
    std::vsnprintf(sz, sizeof sz, pszFormat, args);
    va_end(args);
    return sz;
}

const char* NameOf(Kind nKind)
{
    static constexpr const char* names[] = {"pen", "brush", "font", "bitmap", "region", "dc"};
    return names[static_cast<int>(nKind)];
}

std::string Describe(HGDIOBJ hObject)
{
    const uint64_t n = NumberOf(hObject);
    if (!hObject) return "a null handle";
    if (!WasHandle(n)) return Text("%p, which is no handle", hObject);
    const auto nKind = static_cast<Kind>((n - FIRST_HANDLE) % HANDLE_STEP);
    return Text("%s #%llu", NameOf(nKind),
                static_cast<unsigned long long>((n - FIRST_HANDLE) / HANDLE_STEP));
}

// ---- the table ----

Object* Peek(HGDIOBJ hObject)
{
    const auto it = TheTable().objects.find(NumberOf(hObject));
    return it == TheTable().objects.end() ? nullptr : it->second.get();
}

Object* FindAny(HGDIOBJ hObject, const char* pszFunction)
{
    if (Object* pObject = Peek(hObject)) return pObject;
    const bool bDead = WasHandle(NumberOf(hObject)) && !TheTable().dcs.contains(NumberOf(hObject));
    ReportMisuse(std::string(pszFunction) + " of " + Describe(hObject) +
                 (bDead ? ", which was deleted" : ""));
    return nullptr;
}

Object* Find(HGDIOBJ hObject, Kind nKind, const char* pszFunction)
{
    Object* pObject = FindAny(hObject, pszFunction);
    if (!pObject || pObject->nKind == nKind) return pObject;
    ReportMisuse(std::string(pszFunction) + " of " + Describe(hObject) + ", which is no " +
                 NameOf(nKind));
    return nullptr;
}

Dc* FindDc(HDC hdc, const char* pszFunction)
{
    const auto it = TheTable().dcs.find(NumberOf(hdc));
    if (it != TheTable().dcs.end()) return it->second.get();
    const bool bDead = WasHandle(NumberOf(hdc)) && !Peek(hdc);
    ReportMisuse(std::string(pszFunction) + " on " + Describe(hdc) +
                 (bDead ? ", which was deleted" : ", which is no device context"));
    return nullptr;
}

HGDIOBJ Insert(Object object)
{
    object.nSerial = TheTable().nNext++;
    const HGDIOBJ hObject = MakeHandle(object.nKind, object.nSerial);
    TheTable().objects[NumberOf(hObject)] = std::make_unique<Object>(std::move(object));
    return hObject;
}

HDC InsertDc(std::unique_ptr<Dc> pDc)
{
    const auto hdc = static_cast<HDC>(MakeHandle(Kind::Dc, TheTable().nNext++));
    pDc->hdc = hdc;
    TheTable().dcs[NumberOf(hdc)] = std::move(pDc);
    return hdc;
}

void RemoveDc(HDC hdc)
{
    TheTable().dcs.erase(NumberOf(hdc));
}

void ForgetInRecordings(HGDIOBJ hObject)
{
    for (auto& [n, pDc] : TheTable().dcs) {
        const auto it = pDc->numbers.find(hObject);
        if (it == pDc->numbers.end()) continue;
        pDc->calls.push_back(Text("DeleteObject #%d", it->second));
        pDc->numbers.erase(it);
    }
}

uint64_t Mark()
{
    return TheTable().nNext;
}

std::vector<std::string> AliveSince(uint64_t nMark)
{
    std::map<uint64_t, std::string> alive;
    for (const auto& [n, pObject] : TheTable().objects)
        if (pObject->nStock == NOT_STOCK && pObject->nSerial >= nMark)
            alive[n] = Describe(reinterpret_cast<HGDIOBJ>(n));
    for (const auto& [n, pDc] : TheTable().dcs)
        if ((n - FIRST_HANDLE) / HANDLE_STEP >= nMark)
            alive[n] = Describe(reinterpret_cast<HGDIOBJ>(n));
    std::vector<std::string> names;
    for (const auto& [n, name] : alive) names.push_back(name);
    return names;
}

CLeakCheck::~CLeakCheck()
{
    for (const std::string& name : AliveSince(m_nMark)) ReportMisuse(name + " is still alive");
}

// ---- faults ----

// A process can have so many objects at most, as on Windows.
constexpr std::size_t MOST_OBJECTS = 10000;

bool TakeCreation()
{
    Table& table = TheTable();
    if (table.objects.size() + table.dcs.size() >= MOST_OBJECTS) return false;
    if (table.nFaultsOff) return true;
    const int n = ++table.nCreations;
    if (!table.nFailAt) return true;
    return table.bFailAllAfter ? n < table.nFailAt : n != table.nFailAt;
}

void FailCreation(int nNth)
{
    TheTable().nFailAt = nNth;
    TheTable().bFailAllAfter = false;
    TheTable().nCreations = 0;
}

void FailCreationsFrom(int nNth)
{
    FailCreation(nNth);
    TheTable().bFailAllAfter = true;
}

int Creations()
{
    return TheTable().nCreations;
}

bool TakeCall()
{
    Table& table = TheTable();
    return table.nFaultsOff != 0 || ++table.nCalls != table.nCallToFail;
}

void FailCall(int nNth)
{
    TheTable().nCallToFail = nNth;
    TheTable().nCalls = 0;
}

int Calls()
{
    return TheTable().nCalls;
}

CNoFaults::CNoFaults()
{
    ++TheTable().nFaultsOff;
}

CNoFaults::~CNoFaults()
{
    --TheTable().nFaultsOff;
}

CNoTextExtents::CNoTextExtents()
{
    ++TheTable().nExtentsOff;
}

CNoTextExtents::~CNoTextExtents()
{
    --TheTable().nExtentsOff;
}

bool CanMeasureTexts()
{
    return TheTable().nExtentsOff == 0;
}

std::size_t PatternHash(HBRUSH hBrush)
{
    const Object* pBrush = Find(hBrush, Kind::Brush, "PatternHash");
    return pBrush ? pBrush->nPattern : 0;
}

} // namespace gdi

using namespace gdi;

// ---- pens, brushes, fonts, bitmaps ----

HPEN WINAPI CreatePen(INT nStyle, INT nWidth, COLORREF clr)
{
    Object pen;
    pen.nKind = Kind::Pen;
    pen.nStyle =
        nStyle >= PS_SOLID && nStyle <= PS_INSIDEFRAME ? static_cast<DWORD>(nStyle) : PS_SOLID;
    pen.nWidth = nWidth < 0 ? 0U - static_cast<DWORD>(nWidth) : static_cast<DWORD>(nWidth);
    pen.clr = clr;
    return static_cast<HPEN>(Made(pen));
}

HPEN WINAPI ExtCreatePen(DWORD nStyle, DWORD nWidth, const LOGBRUSH* pBrush, DWORD nStyles,
                         const DWORD* pnStyles)
{
    if (!pBrush || (nStyles != 0) != ((nStyle & PS_STYLE_MASK) == PS_USERSTYLE) ||
        (nStyles && !pnStyles)) {
        ReportMisuse("ExtCreatePen without a brush, or with half a style of its own");
        return nullptr;
    }
    Object pen;
    pen.nKind = Kind::Pen;
    pen.nStyle = nStyle;
    pen.nWidth = nWidth;
    pen.clr = pBrush->lbColor;
    pen.lengths.assign(pnStyles, pnStyles + nStyles);
    return static_cast<HPEN>(Made(pen));
}

HBRUSH WINAPI CreateSolidBrush(COLORREF clr)
{
    Object brush;
    brush.nKind = Kind::Brush;
    brush.clr = clr;
    return static_cast<HBRUSH>(Made(brush));
}

// Of all styles alike: whoever draws with one wants to know that it is open.
HBRUSH WINAPI CreateHatchBrush(INT, COLORREF clr)
{
    Object brush;
    brush.nKind = Kind::Brush;
    brush.nStyle = BS_HATCHED;
    brush.clr = clr;
    return static_cast<HBRUSH>(Made(brush));
}

HBRUSH WINAPI CreatePatternBrush(HBITMAP hBitmap)
{
    const Object* pBitmap = Find(hBitmap, Kind::Bitmap, "CreatePatternBrush");
    if (!pBitmap) return nullptr;
    Object brush;
    brush.nKind = Kind::Brush;
    brush.nStyle = BS_PATTERN;
    brush.nPattern = pBitmap->nPattern;
    brush.pTile = pBitmap->pTile;
    brush.bMonochrome = pBitmap->bitmap.bmBitsPixel == 1;
    return static_cast<HBRUSH>(Made(brush));
}

HBRUSH WINAPI CreateDIBPatternBrushPt(const void* pPacked, UINT nUsage)
{
    BITMAPINFOHEADER header{};
    if (pPacked) std::memcpy(&header, pPacked, sizeof header);
    if (!pPacked || nUsage != DIB_RGB_COLORS || header.biSize != sizeof header ||
        header.biPlanes != 1 || header.biBitCount != 32 || header.biCompression != BI_RGB ||
        header.biWidth < 1 || header.biHeight == 0) {
        ReportMisuse("CreateDIBPatternBrushPt of something else than a 32-bit bitmap");
        return nullptr;
    }
    Object brush;
    brush.nKind = Kind::Brush;
    brush.nStyle = BS_DIBPATTERNPT;
    // All of the bitmap is read, as a system does: a block that is too small is found by that.
    const auto nRows = static_cast<std::size_t>(std::abs(static_cast<int64_t>(header.biHeight)));
    const auto nColumns = static_cast<std::size_t>(header.biWidth);
    brush.nPattern = HashOf(pPacked, sizeof header + nColumns * nRows * 4);
    if (nColumns * nRows <= MOST_TILE_PIXELS)
        brush.pTile = TileOf(header.biWidth, static_cast<int>(nRows), [&](int x, int y) {
            const std::size_t nRow = header.biHeight < 0 ? static_cast<std::size_t>(y)
                                                         : nRows - 1 - static_cast<std::size_t>(y);
            uint8_t bgr[4];
            std::memcpy(bgr,
                        static_cast<const char*>(pPacked) + sizeof header +
                            (nRow * nColumns + static_cast<std::size_t>(x)) * 4,
                        sizeof bgr);
            return RGB(bgr[2], bgr[1], bgr[0]);
        });
    return static_cast<HBRUSH>(Made(brush));
}

HFONT WINAPI CreateFontIndirectA(const LOGFONTA* pFont)
{
    if (!pFont) {
        ReportMisuse("CreateFontIndirect without a font");
        return nullptr;
    }
    Object font;
    font.nKind = Kind::Font;
    font.font = *pFont;
    font.font.lfFaceName[LF_FACESIZE - 1] = 0;
    return static_cast<HFONT>(Made(font));
}

HFONT WINAPI CreateFontA(INT nHeight, INT nWidth, INT nEscapement, INT nOrientation, INT nWeight,
                         DWORD bItalic, DWORD bUnderline, DWORD bStrikeOut, DWORD nCharSet,
                         DWORD nOut, DWORD nClip, DWORD nQuality, DWORD nPitch, const char* pszFace)
{
    LOGFONTA font{};
    font.lfHeight = nHeight;
    font.lfWidth = nWidth;
    font.lfEscapement = nEscapement;
    font.lfOrientation = nOrientation;
    font.lfWeight = nWeight;
    font.lfItalic = static_cast<BYTE>(bItalic);
    font.lfUnderline = static_cast<BYTE>(bUnderline);
    font.lfStrikeOut = static_cast<BYTE>(bStrikeOut);
    font.lfCharSet = static_cast<BYTE>(nCharSet);
    font.lfOutPrecision = static_cast<BYTE>(nOut);
    font.lfClipPrecision = static_cast<BYTE>(nClip);
    font.lfQuality = static_cast<BYTE>(nQuality);
    font.lfPitchAndFamily = static_cast<BYTE>(nPitch);
    if (pszFace) std::strncpy(font.lfFaceName, pszFace, LF_FACESIZE - 1);
    return CreateFontIndirectA(&font);
}

// Names of faces are kept as the bytes of the ANSI code page.
HFONT WINAPI CreateFontIndirectW(const LOGFONTW* pFont)
{
    if (!pFont) return CreateFontIndirectA(nullptr);
    LOGFONTA font{};
    std::memcpy(&font, pFont, offsetof(LOGFONTA, lfFaceName));
    ::WideCharToMultiByte(CP_ACP, 0, pFont->lfFaceName, -1, font.lfFaceName, LF_FACESIZE, nullptr,
                          nullptr);
    return CreateFontIndirectA(&font);
}

HFONT WINAPI CreateFontW(INT nHeight, INT nWidth, INT nEscapement, INT nOrientation, INT nWeight,
                         DWORD bItalic, DWORD bUnderline, DWORD bStrikeOut, DWORD nCharSet,
                         DWORD nOut, DWORD nClip, DWORD nQuality, DWORD nPitch,
                         const wchar_t* pszFace)
{
    char szFace[LF_FACESIZE] = "";
    if (pszFace)
        ::WideCharToMultiByte(CP_ACP, 0, pszFace, -1, szFace, LF_FACESIZE, nullptr, nullptr);
    return CreateFontA(nHeight, nWidth, nEscapement, nOrientation, nWeight, bItalic, bUnderline,
                       bStrikeOut, nCharSet, nOut, nClip, nQuality, nPitch,
                       pszFace ? szFace : nullptr);
}

HBITMAP WINAPI CreateBitmap(INT nWidth, INT nHeight, UINT nPlanes, UINT nBits, const void* pBits)
{
    const int64_t nRow = (static_cast<int64_t>(nWidth) * nBits + 15) / 16 * 2;
    if (nWidth < 1 || nHeight < 1 || nPlanes != 1 || nRow * nHeight > 0x7FFFFFFF) return nullptr;
    Object bitmap;
    bitmap.nKind = Kind::Bitmap;
    bitmap.bitmap = {0,      nWidth, nHeight, static_cast<LONG>(nRow), 1, static_cast<WORD>(nBits),
                     nullptr};
    if (pBits) bitmap.nPattern = HashOf(pBits, static_cast<std::size_t>(nRow * nHeight));
    if (pBits && nBits == 1)
        bitmap.pTile = TileOf(nWidth, nHeight, [&](int x, int y) -> COLORREF {
            return static_cast<const uint8_t*>(pBits)[y * nRow + x / 8] >> (7 - x % 8) & 1;
        });
    return static_cast<HBITMAP>(Made(bitmap));
}

// Of four bytes a pixel, all 0 at first. Fills of one colour change them; what else is painted is
// written down and leaves them alone.
HBITMAP WINAPI CreateDIBSection(HDC, const BITMAPINFO* pInfo, UINT, void** ppBits, HANDLE hFile,
                                DWORD)
{
    const BITMAPINFOHEADER& header = pInfo->bmiHeader;
    if (header.biBitCount != 32 || header.biWidth < 1 || header.biHeight >= 0 || hFile) {
        ReportMisuse("CreateDIBSection of another form");
        return nullptr;
    }
    Object bitmap;
    bitmap.nKind = Kind::Bitmap;
    bitmap.bitmap = {0, header.biWidth, -header.biHeight, header.biWidth * 4, 1, 32, nullptr};
    bitmap.pPixels = std::make_shared<std::vector<uint32_t>>(
        static_cast<std::size_t>(header.biWidth) * static_cast<std::size_t>(-header.biHeight));
    bitmap.bitmap.bmBits = bitmap.pPixels->data();
    *ppBits = nullptr;
    const HGDIOBJ hMade = Made(bitmap);
    if (hMade) *ppBits = bitmap.pPixels->data();
    return static_cast<HBITMAP>(hMade);
}

HGDIOBJ WINAPI GetStockObject(INT nIndex)
{
    if (nIndex < 0 || nIndex >= STOCK_COUNT || nIndex == 9 || nIndex == DEFAULT_PALETTE ||
        nIndex > DEFAULT_GUI_FONT) {
        ReportMisuse(Text("GetStockObject of %d", nIndex));
        return nullptr;
    }
    HGDIOBJ& hStock = TheTable().stock[nIndex];
    if (!hStock) hStock = Insert(StockObject(nIndex));
    return hStock;
}

BOOL WINAPI DeleteObject(HGDIOBJ hObject)
{
    const Object* pObject = FindAny(hObject, "DeleteObject");
    if (!pObject) return FALSE;
    if (pObject->nStock != NOT_STOCK) {
        ReportMisuse("DeleteObject of stock object " + std::to_string(pObject->nStock));
        return TRUE;
    }
    if (pObject->nSelected) {
        ReportMisuse("DeleteObject of " + Describe(hObject) + ", which is selected");
        return FALSE;
    }
    ForgetInRecordings(hObject);
    TheTable().objects.erase(NumberOf(hObject));
    return TRUE;
}

DWORD WINAPI GetObjectType(HGDIOBJ hObject)
{
    const auto it = TheTable().dcs.find(NumberOf(hObject));
    if (it != TheTable().dcs.end())
        return it->second->bRecording ? OBJ_ENHMETADC : it->second->window ? OBJ_DC : OBJ_MEMDC;
    const Object* pObject = Peek(hObject);
    if (!pObject) return 0;
    static constexpr DWORD types[] = {OBJ_PEN, OBJ_BRUSH, OBJ_FONT, OBJ_BITMAP, OBJ_REGION};
    if (pObject->nKind == Kind::Pen && (pObject->nStyle & PS_GEOMETRIC)) return OBJ_EXTPEN;
    return types[static_cast<int>(pObject->nKind)];
}

// The whole record or nothing, as the system does.
static INT GiveExtPen(const Object& object, INT nSize, LPVOID pOut)
{
    const DWORD nLengths = static_cast<DWORD>(object.lengths.size());
    const std::size_t nWhole = sizeof(EXTLOGPEN) + nLengths * sizeof(DWORD);
    if (!pOut) return static_cast<INT>(nWhole);
    if (nSize < static_cast<INT>(nWhole)) return 0;
    EXTLOGPEN pen{};
    pen.elpPenStyle = object.nStyle;
    pen.elpWidth = object.nWidth;
    pen.elpColor = object.clr;
    pen.elpNumEntries = nLengths;
    std::memcpy(pOut, &pen, sizeof pen);
    if (nLengths)
        std::memcpy(static_cast<unsigned char*>(pOut) + offsetof(EXTLOGPEN, elpStyleEntry),
                    object.lengths.data(), nLengths * sizeof(DWORD));
    return static_cast<INT>(nWhole);
}

INT WINAPI GetObjectA(HGDIOBJ hObject, INT nSize, LPVOID pOut)
{
    const Object* pObject = FindAny(hObject, "GetObject");
    if (!pObject || !TakeCall()) return 0;
    const auto give = [&](const auto& data) -> INT {
        const INT nGiven =
            nSize < static_cast<INT>(sizeof data) ? nSize : static_cast<INT>(sizeof data);
        if (!pOut) return sizeof data;
        if (nGiven > 0) std::memcpy(pOut, &data, static_cast<std::size_t>(nGiven));
        return nGiven;
    };
    switch (pObject->nKind) {
    case Kind::Pen:
        if (pObject->nStyle & PS_TYPE_MASK) return GiveExtPen(*pObject, nSize, pOut);
        return give(LOGPEN{pObject->nStyle, {static_cast<LONG>(pObject->nWidth), 0}, pObject->clr});
    case Kind::Brush:
        return give(LOGBRUSH{pObject->nStyle, pObject->clr, 0});
    case Kind::Font:
        return give(pObject->font);
    case Kind::Bitmap:
        return give(pObject->bitmap);
    default:
        return 0;
    }
}

// Of fonts alone: all else is the same in both forms.
INT WINAPI GetObjectW(HGDIOBJ hObject, INT nSize, LPVOID pOut)
{
    LOGFONTA font{};
    if (!pOut || nSize != sizeof(LOGFONTW)) {
        ReportMisuse("GetObjectW of something else than a font");
        return 0;
    }
    if (GetObjectA(hObject, sizeof font, &font) != sizeof font) return 0;
    auto* pFont = static_cast<LOGFONTW*>(pOut);
    std::memcpy(pFont, &font, offsetof(LOGFONTA, lfFaceName));
    ::MultiByteToWideChar(CP_ACP, 0, font.lfFaceName, -1, pFont->lfFaceName, LF_FACESIZE);
    return sizeof(LOGFONTW);
}

// A monochrome bitmap is white but for where figures were painted on it.
LONG WINAPI GetBitmapBits(HBITMAP hBitmap, LONG nSize, LPVOID pOut)
{
    const Object* pBitmap = Find(hBitmap, Kind::Bitmap, "GetBitmapBits");
    if (!pBitmap || !pOut || nSize < 0 || !TakeCall()) return 0;
    const BITMAP& bitmap = pBitmap->bitmap;
    const LONG nAll = bitmap.bmWidthBytes * bitmap.bmHeight;
    if (nSize > nAll) nSize = nAll;
    auto* pBytes = static_cast<uint8_t*>(pOut);
    std::memset(pBytes, 0xFF, static_cast<std::size_t>(nSize));
    if (bitmap.bmBitsPixel != 1) return nSize;
    const CArea all = CArea::Rect({0, 0, bitmap.bmWidth, bitmap.bmHeight});
    const CArea black = pBitmap->black.And(all);
    for (const RECT& rc : black.Rects())
        for (LONG y = rc.top; y < rc.bottom; ++y)
            for (LONG n = rc.left / 8; n <= (rc.right - 1) / 8; ++n) {
                const int nFirst = n == rc.left / 8 ? rc.left % 8 : 0;
                const int nLast = n == (rc.right - 1) / 8 ? (rc.right - 1) % 8 : 7;
                const int nMask = (0xFF >> nFirst) & (0xFF << (7 - nLast));
                const LONG nAt = y * bitmap.bmWidthBytes + n;
                if (nAt < nSize) pBytes[nAt] = static_cast<uint8_t>(pBytes[nAt] & ~nMask);
            }
    return nSize;
}
