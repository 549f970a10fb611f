// The public header's values and sizes, as hosts compiled with it rely on them.
#include "include/QELEngine.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>

TEST(Header, VersionIsThatOfTheProjectInOneNumber)
{
    const DWORD nVersion = QELGetVersion();
    EXPECT_EQ(QEL_PROJECT_VERSION, std::to_string(nVersion >> 16) + "." +
                                       std::to_string(nVersion >> 8 & 0xFF) + "." +
                                       std::to_string(nVersion & 0xFF));
}

TEST(Header, RecordsHaveTheirSizesInBothWordSizes)
{
    EXPECT_EQ(424u, sizeof(QELSHAPEATTR));
    EXPECT_EQ(24u, sizeof(QELROOTATTR));
    EXPECT_EQ(4u, sizeof(QELWORDATTR));
    EXPECT_EQ(60u, sizeof(QELSCALEATTR));
    EXPECT_EQ(28u, sizeof(QELDRAWRGNATTR));
    EXPECT_EQ(68u, sizeof(QELMETERATTR));
    EXPECT_EQ(520, QEL_MAX_ATTR_SIZE);
}

TEST(Header, ShapeRecordIsLaidOutStyleBeforeWidth)
{
    EXPECT_EQ(0u, offsetof(QELSHAPEATTR, nSize));
    EXPECT_EQ(4u, offsetof(QELSHAPEATTR, nStyle));
    EXPECT_EQ(8u, offsetof(QELSHAPEATTR, nDraft));
    EXPECT_EQ(12u, offsetof(QELSHAPEATTR, clrA));
    EXPECT_EQ(16u, offsetof(QELSHAPEATTR, clrB));
    EXPECT_EQ(20u, offsetof(QELSHAPEATTR, clrPen));
    EXPECT_EQ(24u, offsetof(QELSHAPEATTR, nPenStyle));
    EXPECT_EQ(28u, offsetof(QELSHAPEATTR, nPenWidth));
    EXPECT_EQ(32u, offsetof(QELSHAPEATTR, nGeometry));
    EXPECT_EQ(33, QEL_SHAPE_WORDS);
    EXPECT_EQ(164u, offsetof(QELSHAPEATTR, szText));
    EXPECT_EQ(256, QEL_TEXT_SIZE);
    EXPECT_EQ(420u, offsetof(QELSHAPEATTR, nFlags));
    EXPECT_EQ(16, QEL_MAX_POINTS);
}

TEST(Header, RootRecordIsLaidOutWordByWord)
{
    EXPECT_EQ(0u, offsetof(QELROOTATTR, nSize));
    EXPECT_EQ(4u, offsetof(QELROOTATTR, nFormat));
    EXPECT_EQ(8u, offsetof(QELROOTATTR, nType));
    EXPECT_EQ(12u, offsetof(QELROOTATTR, nWidth));
    EXPECT_EQ(16u, offsetof(QELROOTATTR, nHeight));
    EXPECT_EQ(20u, offsetof(QELROOTATTR, nRotate));
}

TEST(Header, ElementTypesAreThoseOfTheFormat)
{
    const int types[] = {QEL_TYPE_ROOT,    QEL_TYPE_TEXT,      QEL_TYPE_RECT,     QEL_TYPE_CHORD,
                         QEL_TYPE_PIE,     QEL_TYPE_ROUNDRECT, QEL_TYPE_ARC,      QEL_TYPE_ELLIPSE,
                         QEL_TYPE_CIRCLE,  QEL_TYPE_LINE,      QEL_TYPE_POLYLINE, QEL_TYPE_POLYGON,
                         QEL_TYPE_PATH,    QEL_TYPE_DEFS,      QEL_TYPE_USE,      QEL_TYPE_GROUP,
                         QEL_TYPE_STATUS,  QEL_TYPE_FRAME,     QEL_TYPE_SCALE,    QEL_TYPE_PATTERN,
                         QEL_TYPE_DRAWRGN, QEL_TYPE_METER,     QEL_TYPE_NONE};
    for (int i = 0; i <= 22; ++i) EXPECT_EQ(i, types[i]);
}

TEST(Header, FlagsAndStylesAreThoseOfTheFormat)
{
    struct Row {
        const char* pszName;
        unsigned nExpected;
        unsigned nValue;
    };
    const Row rows[] = {{"full", 1, QEL_DRAW_FULL},
                        {"pressed", 2, QEL_DRAW_PRESSED},
                        {"stroke", 0, QEL_STYLE_STROKE},
                        {"fill", 1, QEL_STYLE_FILL},
                        {"fill 3D up", 3, QEL_STYLE_FILL_3DUP},
                        {"fill 3D down", 5, QEL_STYLE_FILL_3DDOWN},
                        {"up bit", 2, QEL_STYLE_UP_BIT},
                        {"down bit", 4, QEL_STYLE_DOWN_BIT},
                        {"fill mask", 0xFFFF, QEL_STYLE_FILL_MASK},
                        {"colour parameter", 0x1, QEL_FLAG_COLOR_PARAM},
                        {"hatch parameters", 0x80, QEL_FLAG_DRAFT_PARAM},
                        {"press", 0x4000, QEL_FLAG_PRESS},
                        {"keep none", 0, QEL_KEEP_NONE},
                        {"keep all", 0x1000, QEL_KEEP_ALL},
                        {"keep left", 0x8000, QEL_KEEP_LEFT},
                        {"keep top", 0x10000, QEL_KEEP_TOP},
                        {"keep right", 0x40000, QEL_KEEP_RIGHT},
                        {"keep bottom", 0x80000, QEL_KEEP_BOTTOM},
                        {"anchor mask", 0xD9000, QEL_KEEP_ANCHOR_MASK},
                        {"along, borders", 0, QEL_ALONG_KEEP_BORDERS},
                        {"along, length", 0x100000, QEL_ALONG_KEEP_LENGTH},
                        {"along, as drawing", 0x200000, QEL_ALONG_AS_QEL},
                        {"along mask", 0x300000, QEL_ALONG_MASK},
                        {"away, as drawing", 0, QEL_AWAY_AS_QEL},
                        {"away, as graph", 0x20000, QEL_AWAY_AS_GRAPH},
                        {"away, length", 0x400000, QEL_AWAY_KEEP_LENGTH},
                        {"away, border", 0x800000, QEL_AWAY_KEEP_BORDER},
                        {"away mask", 0xC20000, QEL_AWAY_MASK},
                        {"colour mask", 0x1, QEL_MASK_COLOR},
                        {"hatch mask", 0x80, QEL_MASK_DRAFT},
                        {"keep mask", 0x1000, QEL_MASK_KEEP},
                        {"text mask", 0x2000, QEL_MASK_TEXT},
                        {"press mask", 0x4000, QEL_MASK_PRESS},
                        {"blink", 0x80000000, QEL_COLOR_BLINK}};
    for (const Row& row : rows) EXPECT_EQ(row.nExpected, row.nValue) << row.pszName;
}

TEST(Header, ParametersAndSelectorsAreCountedFromZero)
{
    EXPECT_EQ(0, QEL_PARAM_COLOR);
    EXPECT_EQ(1, QEL_PARAM_DRAFT);
    EXPECT_EQ(2, QEL_PARAM_DRAFT_FORE);
    EXPECT_EQ(3, QEL_PARAM_DRAFT_BACK);
    EXPECT_EQ(4, QEL_PARAM_COUNT);
    EXPECT_EQ(6, QEL_SEL_VALUE);
    EXPECT_EQ(24, QEL_SEL_BASE_VALUE);
    EXPECT_EQ(26, QEL_SEL_ANGLE_OFFSET);
    EXPECT_EQ(34, QEL_SEL_COUNT);
    EXPECT_EQ(10, DRAFT_GRADIENT);
    EXPECT_EQ(38, DRAFT_COUNT);
}

TEST(Header, HandlesAreThreeTypesOfPointerSize)
{
    EXPECT_EQ(sizeof(void*), sizeof(HQELENGINE));
    EXPECT_EQ(sizeof(void*), sizeof(HQELELEM));
    EXPECT_EQ(sizeof(void*), sizeof(HQELGRADIENT));
    EXPECT_FALSE((std::is_convertible_v<HQELENGINE, HQELELEM>));
    EXPECT_FALSE((std::is_convertible_v<HQELELEM, HQELENGINE>));
    EXPECT_FALSE((std::is_convertible_v<HQELGRADIENT, HQELELEM>));
    EXPECT_EQ(4u, sizeof(tagDRAFTSTYLE));
}

TEST(Header, HatchClassIsTheTableTheStyleAndWhatItOwns)
{
    // Table of virtual functions, style, bitmap, brush, descriptor, rectangle; padded on 64 bits.
    EXPECT_EQ(sizeof(void*) == 4 ? 36u : 56u, sizeof(CQELDraft));
    EXPECT_EQ(10u * 8u * 2u, sizeof CQELDraft::m_byColorsBits);
    EXPECT_TRUE(std::has_virtual_destructor_v<CQELDraft>);
    EXPECT_TRUE((std::is_convertible_v<tagDRAFTSTYLE, CQELDraft>)); // a style converts
}
