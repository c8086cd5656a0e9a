#include "cli/json.h"

#include <gtest/gtest.h>

#include <limits>

namespace orrery::cli {
namespace {

struct TextCase {
    const char* name;
    std::string text;
    const char* expected;
};

class JsonTextTest : public testing::TestWithParam<TextCase> {};

TEST_P(JsonTextTest, EscapesWhatMustBeEscaped)
{
    EXPECT_EQ(JsonWriter().Text(GetParam().text).Result(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, JsonTextTest,
    testing::Values(
        TextCase{"Plain", "Desk.xlsx", R"("Desk.xlsx")"}, TextCase{"Empty", "", R"("")"},
        TextCase{"QuotesAndBackslashes", R"(C:\a "b")", R"("C:\\a \"b\"")"},
        TextCase{"LineEnds", "a\r\nb\tc", R"("a\r\nb\tc")"},
        TextCase{"Controls", std::string("\x00\x01\x1F\x7F", 4), "\"\\u0000\\u0001\\u001f\x7F\""},
        TextCase{"OtherCharactersAreUnchanged", "M\xC3\xA4rz \xF0\x9F\x8E\x84",
                 "\"M\xC3\xA4rz \xF0\x9F\x8E\x84\""},
        TextCase{"InvalidUtf8",
                 "a\xFF"
                 "b\xC3",
                 "\"a\xEF\xBF\xBD"
                 "b\xEF\xBF\xBD\""},
        TextCase{"SurrogateBytes", "\xED\xA0\x80", "\"\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\""}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(JsonWriterTest, SeparatesMembersAndValues)
{
    JsonWriter json;
    json.BeginObject().Key("a").Number(-5).Key("b").Boolean(true).Key("c").Texts({"x", "y"});
    json.Key("d").BeginArray().BeginObject().Key("e").Boolean(false).EndObject();
    json.BeginObject().EndObject().EndArray().Key("f").Texts({}).EndObject();
    EXPECT_EQ(json.Result(), R"({"a":-5,"b":true,"c":["x","y"],"d":[{"e":false},{}],"f":[]})");
}

struct DecimalCase {
    const char* name;
    double value;
    const char* expected;
};

class JsonDecimalTest : public testing::TestWithParam<DecimalCase> {};

TEST_P(JsonDecimalTest, HasAtMostThreeDecimals)
{
    EXPECT_EQ(JsonWriter().Decimal(GetParam().value).Result(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Values, JsonDecimalTest,
    testing::Values(DecimalCase{"Whole", 64, "64"}, DecimalCase{"Half", 0.5, "0.5"},
                    DecimalCase{"Rounded", 2.0 / 3, "0.667"},
                    DecimalCase{"NoNegativeZero", -0.0001, "0"},
                    DecimalCase{"Negative", -1.25, "-1.25"},
                    DecimalCase{"Infinite", std::numeric_limits<double>::infinity(), "null"}),
    [](const auto& each) { return std::string(each.param.name); });

} // namespace
} // namespace orrery::cli
