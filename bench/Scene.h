// Drawings for the measurements, made from a number: the same count gives the same bytes
// everywhere.
#pragma once

#include "include/QELEngine.h"

#include <string>
#include <vector>

struct Shape {
    int nType; // QEL_TYPE_…, 1 to 11
    DWORD nStyle;
    int nDraft;
    DWORD clrA;
    DWORD clrB;
    DWORD clrPen;
    int nPenWidth;
    int n[QEL_SHAPE_WORDS];
    std::string text;
};

enum class SceneKind {
    Mixed, // the eleven classes by turns, about 75 bytes of file an element
    Lines, // lines only
    Rects  // filled rectangles only
};

constexpr SIZE SCENE_SIZE{1000, 750}; // in drawing units

std::vector<Shape> MakeScene(SceneKind nKind, int nCount);
// The file of a scene. nLevels: how deep its shapes nest in groups; 0 for siblings.
std::string SceneText(const std::vector<Shape>& shapes, int nLevels = 0);
// A panel of round meters with the ids from nFirstId and the identifiers "m0", "m1" ..., and static
// shapes behind them.
std::string PanelText(int nMeters, int nFirstId, const std::vector<Shape>& behind);
