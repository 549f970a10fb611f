// The drawings that the long run works on.
#pragma once

#include <windows.h>

#include <string>

constexpr int METER_TYPES = 11;
constexpr int SCALE_TYPES = 6;
constexpr int FIRST_METER_ID = 40; // of the meters that are not the live one
constexpr int FIRST_SCALE_ID = 60;
constexpr SIZE PANEL_SIZE{200, 150};
constexpr RECT CLOCK_CELL{150, 50, 200, 100}; // its hands stand elsewhere at every look

// A panel with a meter of every type, status pictures, blinking colours, a pattern, a frame, a draw
// region and every kind of shape. The meter of type nLive has the id 0, the one whose value a host
// can set; the others have FIRST_METER_ID and their type.
std::string MeterPanel(int nLive);
// A panel with a scale of every type, and status pictures. It is drawn whole with every redraw.
std::string ScalePanel();
// Many shapes and groups, nothing that moves.
std::string ShapePanel(int nShapes);

constexpr int LIVE_LAMPS = 50;
constexpr int LIVE_DIALS = 20;
constexpr int LIVE_NUMBERS = 20;
constexpr SIZE LIVE_PANEL_SIZE{500, 400};

// A panel whose values are set by identifier: lamps "l0" and on, dials "d0", numbers in texts "n0".
std::string LivePanel();
