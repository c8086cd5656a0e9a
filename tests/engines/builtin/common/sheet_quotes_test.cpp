#include "engines/builtin/common/sheet_quotes.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

struct SheetCase {
    const char* name;
    const char* sheet;
    bool expected;
};
class NeedsApostrophesTest : public testing::TestWithParam<SheetCase> {};

TEST_P(NeedsApostrophesTest, KnowsWhatReadsAsSomethingElse)
{
    EXPECT_EQ(NeedsApostrophes(GetParam().sheet), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Sheets, NeedsApostrophesTest,
    testing::Values(SheetCase{"Plain", "Month", false}, SheetCase{"Underscore", "_all.2", false},
                    SheetCase{"Empty", "", true}, SheetCase{"Blank", "My plan", true},
                    SheetCase{"LeadingDigit", "2027", true}, SheetCase{"Cell", "Jan27", true},
                    SheetCase{"LastColumn", "XFD1", true}, SheetCase{"NoColumn", "XFE1", false},
                    SheetCase{"LongWord", "CALENDAR1", false}, SheetCase{"Row", "R1C1", true},
                    SheetCase{"OtherNotation", "rc", true}, SheetCase{"Column", "C", true},
                    SheetCase{"TruthValue", "True", true}, SheetCase{"Hyphen", "a-b", true},
                    SheetCase{"Umlaut", "\xC3\x9C", true}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(InApostrophesTest, DoublesThoseInside)
{
    EXPECT_EQ(InApostrophes("Ann's"), "'Ann''s'");
    EXPECT_EQ(InApostrophes(""), "''");
}

} // namespace
} // namespace orrery::builtin
