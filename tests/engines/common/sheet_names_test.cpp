#include "book/error.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <optional>

#include <string>

namespace orrery::engines {
namespace {

std::string Repeat(std::string_view text, int times)
{
    std::string repeated;
    for (; times > 0; --times)
        repeated += text;
    return repeated;
}

TEST(IsValidSheetNameTest, TakesWhatExcelTakes)
{
    for (const std::string_view name : {"Desk", "1", "It's", "März 2027", "a!b", "Histories", "<&>",
                                        "\"x\"", "日程表", "#REF", "$A$1", "{}", "Desk (2)"})
        EXPECT_TRUE(IsValidSheetName(name)) << name;
}

TEST(IsValidSheetNameTest, RefusesWhatExcelRefuses)
{
    for (const std::string_view name :
         {"", "a:b", "a\\b", "a/b", "a?", "*", "[x", "x]", "'a", "a'", "'", "History", "hISTORY",
          "a\tb", "a\nb", "a\x7f", "\xff", "\xc3", "\xef\xbf\xbf"})
        EXPECT_FALSE(IsValidSheetName(name)) << name;
    EXPECT_FALSE(IsValidSheetName(std::string_view("a\0b", 3)));
}

TEST(CheckSheetNameTest, RefusesInvalidNamesAndThoseOfOthers)
{
    const auto problem = [](std::string_view name) -> std::optional<util::AnyErrorKind> {
        try {
            CheckSheetName(name, {"Plan", "M\xC3\xA4rz"});
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Subject(), name);
            return error.Kind();
        }
        return std::nullopt;
    };
    EXPECT_EQ(problem("June"), std::nullopt);
    EXPECT_EQ(problem("a/b"), book::ErrorKind::InvalidSheetName);
    EXPECT_EQ(problem("pLAN"), book::ErrorKind::SheetNameTaken);
    EXPECT_EQ(problem("M\xC3\x84RZ"), book::ErrorKind::SheetNameTaken);
}

TEST(IsValidSheetNameTest, CountsUtf16Units)
{
    EXPECT_TRUE(IsValidSheetName(Repeat("a", 31)));
    EXPECT_FALSE(IsValidSheetName(Repeat("a", 32)));
    EXPECT_TRUE(IsValidSheetName(Repeat("月", 31)));
    EXPECT_FALSE(IsValidSheetName(Repeat("月", 32)));
    EXPECT_TRUE(IsValidSheetName(Repeat("📅", 15) + "a")); // two units each
    EXPECT_FALSE(IsValidSheetName(Repeat("📅", 16)));
}

struct SameCase {
    const char* name;
    std::string_view left;
    std::string_view right;
    bool same;
};
class SameSheetNameTest : public testing::TestWithParam<SameCase> {};
TEST_P(SameSheetNameTest, IgnoresCase)
{
    const auto& [name, left, right, same] = GetParam();
    EXPECT_EQ(SameName(left, right), same);
    EXPECT_EQ(SameName(right, left), same);
    EXPECT_EQ(FoldCase(left) == FoldCase(right), same);
}
INSTANTIATE_TEST_SUITE_P(
    Names, SameSheetNameTest,
    testing::Values(
        SameCase{"Ascii", "Desk", "dESK", true}, SameCase{"Other", "Desk", "Disk", false},
        SameCase{"Longer", "Desk", "Desks", false}, SameCase{"Empty", "", "", true},
        SameCase{"Latin1", "MÄRZ ÀÞ", "märz àþ", true}, SameCase{"TimesSign", "×", "÷", false},
        SameCase{"SharpS", "Straße", "STRAßE", true},
        SameCase{"LatinExtendedA", "ĀĐŁŐŠŽŸ", "āđłőšžÿ", true},
        SameCase{"NotNeighbours", "ā", "Ă", false}, SameCase{"DotlessI", "ı", "I", false},
        SameCase{"DottedI", "İ", "I", false}, SameCase{"Greek", "ΆΈΏΑΣΩ", "άέώασω", true},
        SameCase{"FinalSigma", "ΜΗΝΑΣ", "μηνας", true},
        SameCase{"Cyrillic", "ЯНВАРЬ ЁЄЇҐ", "январь ёєїґ", true},
        SameCase{"Vietnamese", "THÁNG MƯỜI", "tháng mười", true},
        SameCase{"Armenian", "Ա", "ա", true}, SameCase{"FullWidth", "ＡＺ", "ａｚ", true},
        SameCase{"Accent", "e", "é", false}, SameCase{"Ideographs", "日程", "日程", true},
        SameCase{"BeyondTheFirstPlane", "📅", "📅", true},
        SameCase{"BrokenBytes", "\xc3", "\xc4", false}),
    [](const auto& row) { return std::string(row.param.name); });

struct CopyCase {
    const char* name;
    std::string model;
    std::vector<std::string> taken;
    std::string expected;
};
class CopyNameTest : public testing::TestWithParam<CopyCase> {};
TEST_P(CopyNameTest, NumbersLikeExcel)
{
    EXPECT_EQ(CopyName(GetParam().model, GetParam().taken), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(
    Names, CopyNameTest,
    testing::Values(
        CopyCase{"First", "Desk", {"Desk"}, "Desk (2)"},
        CopyCase{"Second", "Desk", {"Desk", "Desk (2)"}, "Desk (3)"},
        CopyCase{"OtherCase", "Desk", {"Desk", "DESK (2)"}, "Desk (3)"},
        CopyCase{"Gap", "Desk", {"Desk", "Desk (3)"}, "Desk (2)"},
        CopyCase{"OfACopy", "Desk (2)", {"Desk", "Desk (2)"}, "Desk (3)"},
        CopyCase{"NoNumber", "Desk (x)", {"Desk (x)"}, "Desk (x) (2)"},
        CopyCase{"EmptyNumber", "Desk ()", {"Desk ()"}, "Desk () (2)"},
        CopyCase{"NoBlank", "Desk(2)", {"Desk(2)"}, "Desk(2) (2)"},
        CopyCase{"OnlyNumber", " (2)", {" (2)"}, " (2) (2)"},
        CopyCase{"Cut", Repeat("a", 31), {Repeat("a", 31)}, Repeat("a", 27) + " (2)"},
        CopyCase{"CutAgain",
                 Repeat("a", 27) + " (9)",
                 {Repeat("a", 27) + " (2)", Repeat("a", 27) + " (3)", Repeat("a", 27) + " (4)",
                  Repeat("a", 27) + " (5)", Repeat("a", 27) + " (6)", Repeat("a", 27) + " (7)",
                  Repeat("a", 27) + " (8)", Repeat("a", 27) + " (9)"},
                 Repeat("a", 26) + " (10)"},
        CopyCase{"CutBetweenCharacters", Repeat("📅", 15) + "a", {}, Repeat("📅", 13) + " (2)"}),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace orrery::engines
