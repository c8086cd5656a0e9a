#include "engines/builtin/xlsx/look/cells/iso_date.h"

#include <gtest/gtest.h>

namespace orrery::xlsx {
namespace {

using book::DateSystem;

std::optional<double> From1900(std::string_view text)
{
    return ParseIsoDate(text, DateSystem::From1900);
}

TEST(ParseIsoDate, CountsDays)
{
    EXPECT_EQ(From1900("1900-01-01"), 1);
    EXPECT_EQ(From1900("1900-02-28"), 59);
    EXPECT_EQ(From1900("1900-03-01"), 61);
    EXPECT_EQ(From1900("2000-01-01"), 36526);
    EXPECT_EQ(From1900("9999-12-31"), 2958465);
    EXPECT_EQ(ParseIsoDate("1904-01-01", DateSystem::From1904), 0);
    EXPECT_EQ(ParseIsoDate("2000-01-01", DateSystem::From1904), 35064);
}

TEST(ParseIsoDate, AddsTheTime)
{
    EXPECT_EQ(From1900("2000-01-01T12:00:00"), 36526.5);
    EXPECT_EQ(From1900("2000-01-01T06:00Z"), 36526.25);
    EXPECT_EQ(From1900("18:00:00.000"), 0.75);
    EXPECT_EQ(From1900("T18:00"), 0.75);
}

TEST(ParseIsoDate, RefusesOthers)
{
    for (const char* text : {"", "2000", "2000-13-01", "2001-02-29", "2000-01-01T", "2000-1-1",
                             "2000-01-01T25:00:00", "12:61", "noon", "-001-01-01", "12:00:xx"})
        EXPECT_EQ(From1900(text), std::nullopt) << text;
}

} // namespace
} // namespace orrery::xlsx
