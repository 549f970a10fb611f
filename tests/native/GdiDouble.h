// A stand-in for GDI that the native build of the engine draws on. It is strict, as no real system
// is: it knows every object's life and every device context's state, and reports each misuse that
// a real system would let pass. It writes down what would have been painted, and paints no more
// than fills of one colour, where a bitmap has pixels that its maker sees.
//
//     gdi::CLeakCheck leaks;             // reports what is alive at the end of the scope
//     gdi::CStateCheck state(hdc);       // reports a device context that is left changed
//     gdi::FailCreation(3);              // the third object that is made from here on is not made
#pragma once

#include "tests/native/Area.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gdi {

// ---- misuse ----

// Told of each misuse. The one that stands at first prints it and aborts; null puts that one back.
using MisuseHandler = void (*)(const std::string& what);
MisuseHandler SetMisuseHandler(MisuseHandler pfnHandler);
void ReportMisuse(const std::string& what);

// ---- the life of objects ----

uint64_t Mark(); // a moment: objects made from now on are younger
// The objects and device contexts made since a moment that are still alive, "pen #12" and so on.
std::vector<std::string> AliveSince(uint64_t nMark);

class CLeakCheck { // reports what was made in its scope and outlives it
public:
    CLeakCheck() : m_nMark(Mark()) {}
    ~CLeakCheck();
    CLeakCheck(const CLeakCheck&) = delete;
    CLeakCheck& operator=(const CLeakCheck&) = delete;

private:
    uint64_t m_nMark;
};

// ---- faults ----

// Objects are counted as they are asked for: pens, brushes, fonts, bitmaps, regions and memory
// device contexts. The n-th from now fails, or it and all after it. 0: none.
void FailCreation(int nNth);
void FailCreationsFrom(int nNth);
int Creations(); // how many were asked for since the last of these two calls

// Calls that a real system may refuse although they are right are counted as well: of regions,
// clips, conversions, saved states and what objects hold. The n-th from now fails. 0: none.
void FailCall(int nNth);
int Calls(); // since the last of that

// Creations and calls done by a test itself while a fault is set do not count.
class CNoFaults {
public:
    CNoFaults();
    ~CNoFaults();
    CNoFaults(const CNoFaults&) = delete;
    CNoFaults& operator=(const CNoFaults&) = delete;
};

class CNoTextExtents { // while one lives, no text can be measured
public:
    CNoTextExtents();
    ~CNoTextExtents();
    CNoTextExtents(const CNoTextExtents&) = delete;
    CNoTextExtents& operator=(const CNoTextExtents&) = delete;
};
bool CanMeasureTexts();

// ---- surfaces that are no plain bitmaps ----

// A unit of the device context counts so many pixels from now on, where places are converted and in
// rectangles that narrow its clip. 0: it converts nothing. Figures are in pixels as ever.
void SetPixelsPerUnit(HDC hdc, int nPixels);

// From now on a memory device context is one of a window, whose picture its bitmap is.
struct Window {
    POINT ptOrigin; // of the device context, on the screen
    RECT rcClient;  // of the window, on the screen
    RECT rcCovered; // by other windows, in pixels of the device context
};
void ShowInWindow(HDC hdc, const Window& window);

// ---- the state of device contexts ----

constexpr unsigned MAY_CHANGE_COLORS = 1; // text and background colour

// Everything that a call could leave changed, as text.
std::string State(HDC hdc, unsigned nMayChange = 0);

class CStateCheck { // reports a device context that is not as it was at the start of the scope
public:
    explicit CStateCheck(HDC hdc, unsigned nMayChange = 0)
        : m_hdc(hdc), m_nMayChange(nMayChange), m_before(State(hdc, nMayChange))
    {
    }
    ~CStateCheck();
    CStateCheck(const CStateCheck&) = delete;
    CStateCheck& operator=(const CStateCheck&) = delete;

private:
    HDC m_hdc;
    unsigned m_nMayChange;
    std::string m_before;
};

// ---- what was drawn ----

// A device context that keeps its calls, in the text form of tests/support/Recording.h.
HDC CreateRecordingDc();
std::vector<std::string> EndRecording(HDC hdc); // the calls; the device context is gone then

// What is painted onto a device context, one line a figure, with all of the state that its pixels
// depend on. Two equal lists are two equal pictures; equal pictures may have different lists.
void LogPaintings(HDC hdc); // begins, or begins anew
const std::vector<std::string>& Paintings(HDC hdc);

// The same in layers, in the order in which they lie on each other: a fill covers exactly its area
// with its brush, a figure covers some of its area in a way that its text alone says.
struct Tile { // the pixels of a pattern brush; they begin at 0,0 and go on in all directions
    int nWidth = 0;
    int nHeight = 0;
    std::vector<COLORREF> pixels; // of a monochrome one 0 or 1 as long as it is not painted with

    [[nodiscard]] COLORREF At(int x, int y) const;
};
struct Layer {
    std::string what;
    CArea area;
    bool bFill = false;
    std::shared_ptr<const Tile> pTile; // of a fill with a pattern
};
const std::vector<Layer>& Layers(HDC hdc);

std::string RegionText(HRGN hRegion);   // its rectangles
std::size_t PatternHash(HBRUSH hBrush); // of a pattern brush's pixels

} // namespace gdi
