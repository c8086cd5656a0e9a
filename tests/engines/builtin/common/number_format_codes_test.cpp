#include "engines/builtin/common/number_format_codes.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

TEST(BuiltInNumberFormat, KnowsTheCodes)
{
    EXPECT_EQ(BuiltInNumberFormat(0), "General");
    EXPECT_EQ(BuiltInNumberFormat(4), "#,##0.00");
    EXPECT_EQ(BuiltInNumberFormat(9), "0%");
    EXPECT_EQ(BuiltInNumberFormat(14), "m/d/yyyy");
    EXPECT_EQ(BuiltInNumberFormat(22), "m/d/yyyy h:mm");
    EXPECT_EQ(BuiltInNumberFormat(37), "#,##0_);(#,##0)");
    EXPECT_EQ(BuiltInNumberFormat(44),
              R"(_("$"* #,##0.00_);_("$"* \(#,##0.00\);_("$"* "-"??_);_(@_))");
    EXPECT_EQ(BuiltInNumberFormat(45), "mm:ss");
    EXPECT_EQ(BuiltInNumberFormat(49), "@");
}

TEST(BuiltInNumberFormat, GivesPlainDatesForThoseOfALanguage)
{
    EXPECT_EQ(BuiltInNumberFormat(27), "m/d/yyyy");
    EXPECT_EQ(BuiltInNumberFormat(32), "h:mm:ss");
    EXPECT_EQ(BuiltInNumberFormat(58), "m/d/yyyy");
    EXPECT_EQ(BuiltInNumberFormat(59), "0");
    EXPECT_EQ(BuiltInNumberFormat(67), "0%");
    EXPECT_EQ(BuiltInNumberFormat(81), "m/d/yyyy");
}

TEST(BuiltInNumberFormat, HasNoneBetweenAndBeyond)
{
    EXPECT_EQ(BuiltInNumberFormat(23), std::nullopt);
    EXPECT_EQ(BuiltInNumberFormat(66), std::nullopt);
    EXPECT_EQ(BuiltInNumberFormat(82), std::nullopt);
    EXPECT_EQ(BuiltInNumberFormat(164), std::nullopt);
}

} // namespace
} // namespace orrery::builtin
