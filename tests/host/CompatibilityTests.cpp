// What hosts have compiled into themselves: sizes and places of all that passes between a host and
// the DLL, and the numbers of the interface. A change here breaks hosts that are not built anew;
// each row says how they would notice. A test that fails wants the change undone, not the row
// changed.
#include "include/QELEngine.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

struct PlaceRow {
    const char* pszWhat;
    std::size_t nNow;
    std::size_t nOn32;
    std::size_t nOn64;
    const char* pszNotice;
};

constexpr const char* SIZE_NOTICE =
    "hosts pass records of the old size: sets are refused, and gets write beyond their buffer";
constexpr const char* PLACE_NOTICE = "hosts read and write another field than they mean";
constexpr const char* CLASS_NOTICE =
    "objects in hosts are too small, or derived classes have their members elsewhere";

#define PLACE(type, field, n)                                                                      \
    {                                                                                              \
#type "." #field, offsetof(type, field), n, n, PLACE_NOTICE                                \
    }
#define SIZE_OF(type, n32, n64, notice)                                                            \
    {                                                                                              \
        "sizeof " #type, sizeof(type), n32, n64, notice                                            \
    }

const PlaceRow g_places[] = {
    SIZE_OF(QELSHAPEATTR, 424, 424, SIZE_NOTICE),
    PLACE(QELSHAPEATTR, nSize, 0),
    PLACE(QELSHAPEATTR, nStyle, 4),
    PLACE(QELSHAPEATTR, nDraft, 8),
    PLACE(QELSHAPEATTR, clrA, 12),
    PLACE(QELSHAPEATTR, clrB, 16),
    PLACE(QELSHAPEATTR, clrPen, 20),
    PLACE(QELSHAPEATTR, nPenStyle, 24),
    PLACE(QELSHAPEATTR, nPenWidth, 28),
    PLACE(QELSHAPEATTR, nGeometry, 32),
    PLACE(QELSHAPEATTR, szText, 164),
    PLACE(QELSHAPEATTR, nFlags, 420),
    SIZE_OF(QELROOTATTR, 24, 24, SIZE_NOTICE),
    PLACE(QELROOTATTR, nFormat, 4),
    PLACE(QELROOTATTR, nType, 8),
    PLACE(QELROOTATTR, nWidth, 12),
    PLACE(QELROOTATTR, nHeight, 16),
    PLACE(QELROOTATTR, nRotate, 20),
    SIZE_OF(QELWORDATTR, 4, 4, SIZE_NOTICE),
    SIZE_OF(QELSCALEATTR, 60, 60, SIZE_NOTICE),
    PLACE(QELSCALEATTR, nId, 4),
    PLACE(QELSCALEATTR, bHide, 8),
    PLACE(QELSCALEATTR, nType, 12),
    PLACE(QELSCALEATTR, nStyle, 16),
    PLACE(QELSCALEATTR, nMin, 20),
    PLACE(QELSCALEATTR, nMax, 24),
    PLACE(QELSCALEATTR, bPin, 28),
    PLACE(QELSCALEATTR, nGeometry, 32),
    SIZE_OF(QELDRAWRGNATTR, 28, 28, SIZE_NOTICE),
    PLACE(QELDRAWRGNATTR, nStyle, 4),
    PLACE(QELDRAWRGNATTR, rc, 8),
    PLACE(QELDRAWRGNATTR, nFlags, 24),
    SIZE_OF(QELMETERATTR, 68, 68, SIZE_NOTICE),
    PLACE(QELMETERATTR, nId, 4),
    PLACE(QELMETERATTR, bUseScale, 8),
    PLACE(QELMETERATTR, bUsePin, 12),
    PLACE(QELMETERATTR, nType, 16),
    PLACE(QELMETERATTR, nMax, 20),
    PLACE(QELMETERATTR, nMin, 24),
    PLACE(QELMETERATTR, nGeometry, 28),
    PLACE(QELMETERATTR, nFlags, 64),
    SIZE_OF(CQELDraft, 36, 56, CLASS_NOTICE),
    SIZE_OF(tagDRAFTSTYLE, 4, 4, CLASS_NOTICE),
    SIZE_OF(HQELENGINE, 4, 8, "hosts keep half of a handle"),
};

struct NumberRow {
    const char* pszName;
    int nNow;
    int nAlways;
};

#define NUMBER(name, n)                                                                            \
    {                                                                                              \
#name, static_cast < int>(name), n                                                         \
    }

const NumberRow g_numbers[] = {
    NUMBER(QEL_TYPE_ROOT, 0),         NUMBER(QEL_TYPE_TEXT, 1),
    NUMBER(QEL_TYPE_POLYGON, 11),     NUMBER(QEL_TYPE_GROUP, 15),
    NUMBER(QEL_TYPE_STATUS, 16),      NUMBER(QEL_TYPE_FRAME, 17),
    NUMBER(QEL_TYPE_SCALE, 18),       NUMBER(QEL_TYPE_PATTERN, 19),
    NUMBER(QEL_TYPE_DRAWRGN, 20),     NUMBER(QEL_TYPE_METER, 21),
    NUMBER(QEL_TYPE_NONE, 22),        NUMBER(QEL_DRAW_FULL, 1),
    NUMBER(QEL_DRAW_PRESSED, 2),      NUMBER(QEL_PARAM_COLOR, 0),
    NUMBER(QEL_PARAM_DRAFT, 1),       NUMBER(QEL_PARAM_DRAFT_FORE, 2),
    NUMBER(QEL_PARAM_DRAFT_BACK, 3),  NUMBER(QEL_SEL_PIN_COLOR, 0),
    NUMBER(QEL_SEL_TICKS, 2),         NUMBER(QEL_SEL_START_CODE, 3),
    NUMBER(QEL_SEL_MAX, 4),           NUMBER(QEL_SEL_MIN, 5),
    NUMBER(QEL_SEL_VALUE, 6),         NUMBER(QEL_SEL_FACE_COLOR, 7),
    NUMBER(QEL_SEL_FULL_CIRCLE, 15),  NUMBER(QEL_SEL_SHOW_ALARM, 16),
    NUMBER(QEL_SEL_REVERSE, 22),      NUMBER(QEL_SEL_BASE_VALUE, 24),
    NUMBER(QEL_SEL_ANGLE_OFFSET, 26), NUMBER(QEL_SEL_SHOW_VALUE, 30),
    NUMBER(QEL_SEL_SECTOR_COUNT, 32), NUMBER(QEL_SEL_FONT_SIZE, 33),
    NUMBER(QEL_SEL_COUNT, 34),        NUMBER(QEL_KEEP_ALL, 0x1000),
    NUMBER(QEL_KEEP_LEFT, 0x8000),    NUMBER(QEL_KEEP_TOP, 0x10000),
    NUMBER(QEL_KEEP_RIGHT, 0x40000),  NUMBER(QEL_KEEP_BOTTOM, 0x80000),
    NUMBER(QEL_FLAG_COLOR_PARAM, 1),  NUMBER(QEL_FLAG_DRAFT_PARAM, 0x80),
    NUMBER(QEL_FLAG_PRESS, 0x4000),   NUMBER(DRAFT_GRADIENT, 10),
    NUMBER(DRAFT_COUNT, 38),
};

} // namespace

TEST(Compatibility, RecordsAndTheClassHaveTheSizesAndPlacesThatHostsWereCompiledWith)
{
    for (const PlaceRow& row : g_places)
        EXPECT_EQ(sizeof(void*) == 4 ? row.nOn32 : row.nOn64, row.nNow)
            << row.pszWhat << " changed: " << row.pszNotice;
}

TEST(Compatibility, NumbersOfTheInterfaceStay)
{
    for (const NumberRow& row : g_numbers)
        EXPECT_EQ(row.nAlways, row.nNow)
            << row.pszName << " changed: hosts that are not built anew mean something else";
}

TEST(Compatibility, TheVersionIsThatOfTheFile)
{
    const DWORD nVersion = QELGetVersion();
    EXPECT_GE(nVersion, 0x10000UL);
    HMODULE hModule = ::GetModuleHandleA("QELEngine.dll");
    HRSRC hResource = ::FindResourceA(hModule, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(16));
    ASSERT_NE(nullptr, hResource) << "Windows shows no version of the file";
    const auto* pWords =
        static_cast<const WORD*>(::LockResource(::LoadResource(hModule, hResource)));
    ASSERT_NE(nullptr, pWords);
    // The fixed block begins with its signature; file and product version are two words each.
    const DWORD nWords = ::SizeofResource(hModule, hResource) / 2;
    DWORD nAt = 0;
    while (nAt + 1 < nWords && !(pWords[nAt] == 0x04BD && pWords[nAt + 1] == 0xFEEF)) ++nAt;
    ASSERT_LT(nAt + 12, nWords);
    for (const DWORD nBlock : {nAt + 4, nAt + 8}) {
        EXPECT_EQ(nVersion >> 16, pWords[nBlock + 1]);   // major
        EXPECT_EQ(nVersion >> 8 & 0xFF, pWords[nBlock]); // minor
        EXPECT_EQ(nVersion & 0xFF, pWords[nBlock + 3]);  // patch
    }
}
