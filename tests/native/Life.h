// A whole life of a drawing for the tests that make something fail: a drawing with every element,
// the engine that holds it, and all that can be seen of it as one text.
#pragma once

#include "include/QELEngine.h"

#include <string>
#include <vector>

// The text of a drawing that has every element, every type of meter and every type of scale, shapes
// in hatches and gradients, with borders and keep modes, and the meters' faces.
std::string EveryElement();

constexpr const char* DRAWING_PATH = "C:\\temp\\drawing.qel";
constexpr const char* OTHER_PATH = "C:\\temp\\other.qel";
constexpr RECT DEVICE_RECT{3, 5, 403, 305};

class CPaper { // a device context with room for all of the device rectangle: dials are clipped to
               // it
public:
    CPaper();
    ~CPaper();
    CPaper(const CPaper&) = delete;
    CPaper& operator=(const CPaper&) = delete;
    operator HDC() const { return m_hdc; }

private:
    HDC m_hdc;
    HBITMAP m_hBitmap;
    HGDIOBJ m_hPrev;
};

class CTestEngine { // an engine, destroyed with its scope
public:
    CTestEngine();
    ~CTestEngine();
    CTestEngine(const CTestEngine&) = delete;
    CTestEngine& operator=(const CTestEngine&) = delete;
    operator HQELENGINE() const { return m_hEngine; }

    // With a drawing open in it.
    bool Open(const std::string& text = EveryElement());

private:
    HQELENGINE m_hEngine;
};

// The elements of a drawing, parents first.
std::vector<HQELELEM> Elements(HQELENGINE hEngine);
HQELELEM ElementById(HQELENGINE hEngine, const std::string& id);

// The bytes that a save writes; "" when there is nothing to save.
std::string SavedBytes(HQELENGINE hEngine);

// All that can be seen of an engine: its tree with all records, its values, the saved bytes, and
// what a full draw paints.
std::string Everything(HQELENGINE hEngine);

// What a draw paints, line by line.
std::vector<std::string> Painted(HQELENGINE hEngine, DWORD nFlags = QEL_DRAW_FULL);
