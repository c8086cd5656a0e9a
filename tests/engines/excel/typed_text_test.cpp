#include "engines/excel/typed_text.h"

#include <gtest/gtest.h>

namespace orrery::excel {
namespace {

class PlainTextTest : public testing::TestWithParam<std::string_view> {};

TEST_P(PlainTextTest, IsTypedAsItIs)
{
    EXPECT_EQ(TypedAsText(GetParam()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Texts, PlainTextTest,
                         testing::Values("", "January", "May", "New Year's Day", "Easter Monday",
                                         "Mariä Himmelfahrt", "Přemysl", "Ζευς", "Рождество",
                                         "Tết Nguyên Đán", "St. Stephen's (Boxing) Day", "Truest",
                                         "WAHRHEIT", "Sant Jordi", "Jan-Feb",
                                         "Said “so” – with dashes"));

class DoubtfulTextTest : public testing::TestWithParam<std::string_view> {};

TEST_P(DoubtfulTextTest, IsTypedBehindAnApostrophe)
{
    EXPECT_EQ(TypedAsText(GetParam()), '\'' + std::string(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Digits, DoubtfulTextTest,
                         testing::Values("01", "1. Mai", "May 1", "1-2", "3/4", "12:30", "1e5",
                                         "50%", "Day 1", "A1", "元日", "１", "٣", "½", "x²", "Q¼"));
INSTANTIATE_TEST_SUITE_P(Beginnings, DoubtfulTextTest,
                         testing::Values("=x", "+x", "-x", "@x", "'x", "$x", "€x", "£x", "¥x",
                                         "＝x", "#N/A", "#NV", "(x)", " x", "\tx", "/x", "\\x",
                                         "\"x", "^x", "×", "\x01"));
INSTANTIATE_TEST_SUITE_P(LogicalWords, DoubtfulTextTest,
                         testing::Values("TRUE", "False", "wahr", "FALSCH", "Vrai", "epätosi",
                                         "fałsz", "истина", "Doğru", "YANLIŞ", "Yanlış", "TRUE "));

} // namespace
} // namespace orrery::excel
