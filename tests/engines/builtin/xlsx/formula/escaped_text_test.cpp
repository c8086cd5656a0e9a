#include "engines/builtin/xlsx/formula/escaped_text.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::xlsx {
namespace {

struct EscapeCase {
    const char* name;
    std::string text;
    std::string expected;
};
class EscapeTextTest : public testing::TestWithParam<EscapeCase> {};
TEST_P(EscapeTextTest, WritesWhatExcelReadsBack)
{
    EXPECT_EQ(EscapeText(GetParam().text), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, EscapeTextTest,
    testing::Values(EscapeCase{"Plain", "Christmas Day", "Christmas Day"},
                    EscapeCase{"TabAndLineFeedStay", "a\tb\nc", "a\tb\nc"},
                    EscapeCase{"CarriageReturn", "a\r\nb", "a_x000D_\nb"},
                    EscapeCase{"Control", std::string("\x01\x1F", 2), "_x0001__x001F_"},
                    EscapeCase{"Null", std::string("a\0b", 3), "a_x0000_b"},
                    EscapeCase{"NotCharacters", "\xEF\xBF\xBE\xEF\xBF\xBF", "_xFFFE__xFFFF_"},
                    EscapeCase{"LooksLikeEscape", "_x0041_", "_x005F_x0041_"},
                    EscapeCase{"LowerCaseDigits", "_x00e9_", "_x005F_x00e9_"},
                    EscapeCase{"SharedUnderscore", "_x0041_x0042_", "_x005F_x0041_x005F_x0042_"},
                    EscapeCase{"UpperCaseX", "_X0041_", "_X0041_"},
                    EscapeCase{"ThreeDigits", "_x041_", "_x041_"},
                    EscapeCase{"NoEnd", "_x0041", "_x0041"},
                    EscapeCase{"EscapeAfterIt", "_x0041\x01", "_x005F_x0041_x0001_"},
                    EscapeCase{"Umlaut", "M\xC3\xA4rz", "M\xC3\xA4rz"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::xlsx
