// What the parts of the stand-in for GDI share: the table of objects and device contexts. A handle
// is never given out again, so that one that is used after its object's end is known as such.
#pragma once

#include "tests/native/Area.h"
#include "tests/native/GdiDouble.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace gdi {

enum class Kind : uint8_t { Pen, Brush, Font, Bitmap, Region, Dc };
const char* NameOf(Kind nKind);

constexpr int NOT_STOCK = -1;

struct Object {
    Kind nKind{};
    uint64_t nSerial = 0;
    int nStock = NOT_STOCK;
    int nSelected = 0; // in how many states of device contexts, saved ones included

    DWORD nStyle = 0; // of a pen or a brush
    DWORD nWidth = 0;
    std::vector<DWORD> lengths; // of a pen with a style of its own
    COLORREF clr = 0;
    std::size_t nPattern = 0; // of a pattern brush: a hash of its pixels
    bool bMonochrome = false; // such a one takes its colours from the device context
    std::shared_ptr<const Tile>
        pTile; // of a pattern brush, and of a bitmap that was made with bits
    LOGFONTA font{};
    BITMAP bitmap{};
    std::shared_ptr<std::vector<uint32_t>> pPixels; // of a bitmap whose pixels its maker sees
    CArea black; // of a monochrome bitmap: where it was painted on
    CArea area;  // of a region
};

struct DcState {
    HGDIOBJ hPen = nullptr;
    HGDIOBJ hBrush = nullptr;
    HGDIOBJ hFont = nullptr;
    HGDIOBJ hBitmap = nullptr;
    int nBkMode = OPAQUE;
    COLORREF clrBk = 0xFFFFFF;
    COLORREF clrText = 0;
    int nRop = R2_COPYPEN;
    int nPolyFill = ALTERNATE;
    int nArc = AD_COUNTERCLOCKWISE;
    UINT nAlign = 0;
    int nMapMode =
        MM_TEXT; // this one and the next two are kept and told; nothing is turned by them
    int nGraphicsMode = GM_COMPATIBLE;
    DWORD nLayout = 0;
    POINT ptViewport{0, 0}; // the rest is kept and told as well, and nothing is moved by it
    POINT ptBrush{0, 0};
    int nExtra = 0;
    FLOAT fMiter = 10;
    POINT pt{0, 0};
    std::optional<CArea> clip;
};

struct Dc {
    HDC hdc = nullptr;
    DcState state;
    std::vector<DcState> saved;
    bool bRecording = false;
    int nPixelsPerUnit = 1; // 0: nothing can be converted
    std::optional<Window> window;
    bool bBounds = false; // whether bounds are summed up; they are not told
    bool bLogging = false;
    std::vector<std::string> calls;
    std::vector<std::string> paintings;
    std::vector<Layer> layers;
    std::map<HGDIOBJ, int> numbers; // of the objects that the recording knows
    int nNumbers = 0;
};

// The object behind a handle; a handle that is null, dead or of another kind is reported as a
// misuse by the function of that name, and the result is null.
Object* Find(HGDIOBJ hObject, Kind nKind, const char* pszFunction);
Object* FindAny(HGDIOBJ hObject, const char* pszFunction);
Object* Peek(HGDIOBJ hObject); // without a report
Dc* FindDc(HDC hdc, const char* pszFunction);
std::string Describe(HGDIOBJ hObject);

bool TakeCreation(); // false: this one is to fail
bool TakeCall();     // the same
HGDIOBJ Insert(Object object);
HDC InsertDc(std::unique_ptr<Dc> pDc);
void RemoveDc(HDC hdc);
void ForEachRecording(void (*pfnVisit)(Dc& dc, HGDIOBJ hObject), HGDIOBJ hObject);
void ForgetInRecordings(HGDIOBJ hObject);

CArea Surface(const Dc& dc); // what its bitmap has room for
CArea Visible(const Dc& dc); // the same within the clip

std::string Text(const char* pszFormat, ...) __attribute__((format(printf, 1, 2)));
void Record(Dc& dc, const std::string& line);
int NumberInRecording(Dc& dc, HGDIOBJ hObject); // makes the record of its creation when it is new

} // namespace gdi
