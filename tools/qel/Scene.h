// What render and animate have in common: their options, and a drawing that is set up by them.
#pragma once

#include "tools/qel/Drawing.h"
#include "tools/qel/FixedTime.h"
#include "tools/qel/LiveOptions.h"

#include <functional>
#include <optional>

namespace qel {

struct SceneOptions {
    explicit SceneOptions(bool bRanges) : live(bRanges) {}

    std::wstring in;
    std::wstring out;
    SIZE size{0, 0};     // a side that is 0 follows the other one, both the drawing
    bool bWhole = false; // the size was given as one
    double fZoom = 0;    // 0: so that the picture is wide enough
    COLORREF clrBackground = RGB(0xC0, 0xC0, 0xC0);
    bool bBackground = false;   // one was asked for
    bool bTransparent = false;  // there is none
    long nScale = 100;          // the pixel scale, in percent
    std::optional<long> smooth; // samples each way; else as the kind of picture has them
    int nRotate = 0;
    bool bBlink = false;
    bool bPressed = false;
    std::wstring font; // empty: one of the default ones
    CLiveOptions live;
};

// The options of a command that draws IN into OUT, without those that only one has.
void AddSceneOptions(OptionRows* pRows);

// Takes what was given to such a command; takeOwn takes the options that only this command has.
void ReadSceneOptions(const CommandLine& given, const char* pszCommand, SceneOptions* pOptions,
                      const std::function<void(const GivenOption&)>& takeOwn);

// The samples each way that were asked for, or those of a picture on a screen.
long SmoothSamples(const SceneOptions& options, bool bForScreen);

// Of the help: how the values of these options are written.
extern const char* const g_sceneNotes;

// The whole text as a number of that base; false for anything else.
bool ReadNumber(const std::wstring& text, int nBase, long* pnValue);

// A drawing in its size and position, with all values set but the ranges.
class CScene {
public:
    CScene(const SceneOptions& options, long nSmooth);

    [[nodiscard]] SIZE Size() const { return m_size; }
    [[nodiscard]] const CDrawing& Drawing() const { return m_drawing; }

    // False: the engine does not draw it.
    bool Paint(HDC hdc) const;       // the background, and all of the drawing
    bool PaintMoving(HDC hdc) const; // over what stands there
    bool PaintAnew(HDC hdc) const;   // as Paint of a new scene with these values
    bool Render(BYTE* pBits) const;  // without a background, into rows of colours times alpha

    void SetBlink(bool bDark) const;
    void SetTime(const SYSTEMTIME& local, const SYSTEMTIME& universal) const;

    // Warns of options that reach nothing in the drawing.
    void TellUnheard() const;

private:
    void Settle() const;
    bool Draw(HDC hdc, DWORD nFlags) const;

    const SceneOptions& m_options;
    CDrawing m_drawing;
    SIZE m_size;
    CFixedTime m_time;
    std::wstring m_face;
};

} // namespace qel
