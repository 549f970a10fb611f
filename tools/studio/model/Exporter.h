// Pictures of an open drawing as it is played with: files, and the clipboard. They are drawn by an
// engine of their own, so that nothing of the one that shows the drawing changes.
#pragma once

#include "tools/studio/model/Play.h"

#include <string>

namespace studio {

struct ExportSetting {
    SIZE size{0, 0};
    bool bSmooth = true;
    bool bTransparent = false; // of a PNG; else the background
    COLORREF clrBackground = RGB(0xFF, 0xFF, 0xFF);
};

class CExporter {
public:
    // Takes what the engine shows: its drawing, and the values, turn and signals of the play.
    CExporter(HQELENGINE hShown, const CPlay& play);
    ~CExporter();
    CExporter(const CExporter&) = delete;
    CExporter& operator=(const CExporter&) = delete;

    // The size of the drawing, as it is turned.
    [[nodiscard]] SIZE RefSize() const;

    // By the extension of the name: .png, .bmp, .jpg or .emf; .gif is all that the signals do, ten
    // pictures a second for their longest period, held between 1 and 30 seconds. 0: *pWhy tells
    // why not.
    int Write(const std::wstring& path, const ExportSetting& setting, std::string* pWhy);

    // To the clipboard, as a bitmap or as a metafile.
    int CopyBitmap(HWND hOwner, const ExportSetting& setting, std::string* pWhy);
    int CopyMetafile(HWND hOwner, SIZE size, std::string* pWhy);

private:
    void SetUp(const ExportSetting& setting) const;
    bool Paint(HDC hdc, const ExportSetting& setting) const;
    void WriteStill(const std::wstring& path, const ExportSetting& setting) const;
    void WriteMovie(const std::wstring& path, const ExportSetting& setting);

    HQELENGINE m_hEngine;
    CPlay m_play;
    std::wstring m_face; // of all texts
};

// How long the pictures of signals go on, in seconds.
double SpanOf(const CSignals& signals);

} // namespace studio
