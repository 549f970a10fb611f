// The coordinates of the shapes, a row a type: what their numbers are, what a new shape has, and so
// how many words a shape holds at least.
#pragma once

#include "document/Crd.h"
#include "include/QELEngine.h"

struct ShapeForm {
    int32_t nType;
    CrdForm form;
};

inline constexpr const char* BOX_MEANING = "left top right bottom";
inline constexpr const char* RADIAL_LAYOUT = "xyxyxyxy";
inline constexpr const char* RADIAL_DEFAULT = "0 0 10 10 10 5 5 0";
inline constexpr const char* RADIAL_MEANING =
    "left top right bottom of the ellipse, then the start and the end point (x y each)";
inline constexpr CrdForm LIST_FORM = {"", false, "0 0 10 10", "2 to 16 points, x y each"};

inline constexpr ShapeForm g_shapeForms[] = {
    {QEL_TYPE_TEXT, {"xyxy", true, "0 0 10 10", BOX_MEANING}},
    {QEL_TYPE_RECT, {"xyxy", true, "0 0 10 10", BOX_MEANING}},
    {QEL_TYPE_CHORD, {RADIAL_LAYOUT, true, RADIAL_DEFAULT, RADIAL_MEANING}},
    {QEL_TYPE_PIE, {RADIAL_LAYOUT, true, RADIAL_DEFAULT, RADIAL_MEANING}},
    {QEL_TYPE_ROUNDRECT,
     {"xyxywh", true, "0 0 10 10 0 0",
      "left top right bottom, then width and height of the corner ellipse in pixels"}},
    {QEL_TYPE_ARC, {RADIAL_LAYOUT, true, RADIAL_DEFAULT, RADIAL_MEANING}},
    {QEL_TYPE_ELLIPSE, {"xyxy", true, "0 0 10 10", BOX_MEANING}},
    {QEL_TYPE_CIRCLE, {"xyr", false, "5 5 5", "centre x y, radius"}},
    {QEL_TYPE_LINE, {"xyxy", false, "0 0 10 10", "start x y, end x y"}},
    {QEL_TYPE_POLYLINE, LIST_FORM},
    {QEL_TYPE_POLYGON, LIST_FORM}};
static_assert(
    [] {
        int32_t nType = QEL_TYPE_TEXT;
        for (const ShapeForm& row : g_shapeForms)
            if (row.nType != nType++) return false;
        return true;
    }(),
    "a row for each shape, in the order of their numbers, which have no gap");

constexpr int32_t SHAPE_TYPES = sizeof g_shapeForms / sizeof g_shapeForms[0];

constexpr bool IsShapeType(int32_t nType)
{
    return nType >= QEL_TYPE_TEXT && nType < QEL_TYPE_TEXT + SHAPE_TYPES;
}

// The coordinates of a shape's type; the first row's for what is none.
constexpr const CrdForm& ShapeFormOf(int32_t nType)
{
    return g_shapeForms[IsShapeType(nType) ? nType - QEL_TYPE_TEXT : 0].form;
}
