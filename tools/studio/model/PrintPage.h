// A printed page: where on the paper a drawing stands, and its painting. A printer, a metafile and
// the preview are painted by the same function, by an engine of its own, so that nothing of the one
// that shows the drawing changes.
#pragma once

#include "tools/studio/model/Play.h"

#include <string>

namespace studio {

// Lengths are hundredths of a millimetre.
struct PageSetup {
    SIZE paper{21000, 29700};
    RECT margins{1500, 1500, 1500, 1500}; // from each edge of the paper inwards
    bool bFit = true; // as large as the margins let it be; else 96 units are an inch
};

void TurnPaper(PageSetup* pSetup, bool bLandscape);
[[nodiscard]] bool IsLandscape(const PageSetup& setup);

// What a page is painted on.
struct PageDevice {
    double fDotsX = 96; // an inch
    double fDotsY = 96;
    POINT ptPaper{0, 0}; // where the corner of the paper is; a printer's first dot is within it
};

// A page in the pixels of its device.
struct PrintPage {
    RECT rcPaper{0, 0, 0, 0};
    RECT rcMargins{0, 0, 0, 0}; // nothing is painted beyond
    RECT rcPicture{0, 0, 0, 0}; // all of the drawing, which may reach beyond the margins
    double fZoom = 0;           // 1: 96 units are an inch
    double fScale = 0;          // pixels of the device that one of the drawing is

    [[nodiscard]] bool IsCut() const; // the margins do not hold all of it
};

// A drawing stands in the middle; one that the margins do not hold begins at their corner. The
// drawing's size is that of its reference rectangle.
PrintPage LayOut(const PageSetup& setup, SIZE drawing, const PageDevice& device);

class CPagePainter {
public:
    // Takes what the engine shows: its drawing, and the values and turn of the play.
    CPagePainter(HQELENGINE hShown, const CPlay& play);
    ~CPagePainter();
    CPagePainter(const CPagePainter&) = delete;
    CPagePainter& operator=(const CPagePainter&) = delete;

    [[nodiscard]] SIZE RefSize() const; // as it is turned
    // Paints the drawing, and no paper below it. 0: the engine does not draw it.
    [[nodiscard]] int Paint(HDC hdc, const PageSetup& setup, const PageDevice& device) const;
    // The page as a metafile that is as large as the paper. 0: *pWhy tells why there is none.
    int WriteMetafile(const std::wstring& path, const PageSetup& setup, std::string* pWhy) const;

private:
    [[nodiscard]] int Draw(HDC hdc, const PrintPage& page) const;
    [[nodiscard]] int Play(HDC hdc, const PageSetup& setup, const PrintPage& page) const;
    [[nodiscard]] std::string Record(const PageSetup& setup) const;

    HQELENGINE m_hEngine;
    std::wstring m_face; // of all texts
};

} // namespace studio
