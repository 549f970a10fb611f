// A filter of rows: all its words have to be there, in any order and case.
#include "tools/studio/model/RowFilter.h"

#include <gtest/gtest.h>

using studio::CRowFilter;
using studio::LiveRow;

namespace {

bool Finds(const std::string& text, const std::string& name,
           const std::string& kind = "meter round")
{
    LiveRow row;
    row.name = name;
    row.kind = kind;
    return CRowFilter(text).Takes(row);
}

} // namespace

TEST(RowFilter, NoWordTakesAll)
{
    EXPECT_TRUE(Finds("", "pump.speed"));
    EXPECT_TRUE(Finds("  ", "pump.speed"));
}

TEST(RowFilter, AWordIsFoundAnywhereInNameOrKind)
{
    EXPECT_TRUE(Finds("speed", "pump.speed"));
    EXPECT_TRUE(Finds("mp.s", "pump.speed"));
    EXPECT_TRUE(Finds("round", "pump.speed"));
    EXPECT_FALSE(Finds("scale", "pump.speed"));
    EXPECT_FALSE(Finds("speedmeter", "pump.speed")) << "it does not go from one to the other";
}

TEST(RowFilter, AllWordsAreWantedInAnyOrderAndCase)
{
    EXPECT_TRUE(Finds("METER Pump", "PUMP.speed"));
    EXPECT_FALSE(Finds("pump scale", "pump.speed"));
    EXPECT_TRUE(Finds("\xE6\xB3\xB5", "\xE6\xB3\xB5.1")) << "names need not be Latin";
}
