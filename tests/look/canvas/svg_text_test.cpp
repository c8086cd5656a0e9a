#include "look/canvas/svg_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace orrery::look {
namespace {

TEST(SvgNumberTest, HasAtMostTwoDecimals)
{
    EXPECT_EQ(SvgNumber(12), "12");
    EXPECT_EQ(SvgNumber(12.5), "12.5");
    EXPECT_EQ(SvgNumber(0.125), "0.13");
    EXPECT_EQ(SvgNumber(-0.051), "-0.05");
    EXPECT_EQ(SvgNumber(99.999), "100");
}

TEST(SvgNumberTest, IsZeroWithoutSign)
{
    EXPECT_EQ(SvgNumber(-0.001), "0");
    EXPECT_EQ(SvgNumber(-0.0), "0");
}

TEST(SvgNumberTest, BoundsWhatIsNoCoordinate)
{
    EXPECT_EQ(SvgNumber(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(SvgNumber(std::numeric_limits<double>::infinity()), "0");
    EXPECT_EQ(SvgNumber(1e300), "10000000");
    EXPECT_EQ(SvgNumber(-1e300), "-10000000");
}

std::string Escaped(std::string_view text)
{
    std::string out;
    AppendEscaped(out, text);
    return out;
}

TEST(AppendEscapedTest, EscapesMarkup)
{
    EXPECT_EQ(Escaped("a<b>&\"c\""), "a&lt;b&gt;&amp;&quot;c&quot;");
    EXPECT_EQ(Escaped("one\r\ntwo\tthree"), "one  two three");
}

TEST(AppendEscapedTest, ReplacesWhatXmlCannotHold)
{
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(Escaped(std::string_view("a\0b", 3)), "a" + replacement + "b");
    EXPECT_EQ(Escaped("\x1B"), replacement);
    EXPECT_EQ(Escaped("\xEF\xBF\xBF"), replacement);              // U+FFFF
    EXPECT_EQ(Escaped("\xC0\xAF"), replacement + replacement);    // "/" too long
    EXPECT_EQ(Escaped("\xE2\x82"), replacement + replacement);    // cut off
    EXPECT_EQ(Escaped("\xED\xA0\x80").substr(0, 3), replacement); // a surrogate
    EXPECT_EQ(Escaped("\xF0\x9F\x98\x80"), "\xF0\x9F\x98\x80");   // U+1F600
}

TEST(SvgNameTest, IsAnXmlName)
{
    EXPECT_EQ(SvgName("B6"), "B6");
    EXPECT_EQ(SvgName("B6:C9"), "B6_C9");
    EXPECT_EQ(SvgName("6 \"x\""), "_6__x_");
    EXPECT_EQ(SvgName(""), "_");
}

TEST(AppendBase64Test, EncodesAsRfc4648)
{
    const auto encoded = [](std::string_view bytes) {
        std::string out;
        AppendBase64(out, bytes);
        return out;
    };
    EXPECT_EQ(encoded(""), ""); // the examples of its section 10
    EXPECT_EQ(encoded("f"), "Zg==");
    EXPECT_EQ(encoded("fo"), "Zm8=");
    EXPECT_EQ(encoded("foo"), "Zm9v");
    EXPECT_EQ(encoded("foobar"), "Zm9vYmFy");
    EXPECT_EQ(encoded("\xFB\xFF"), "+/8=");
}

TEST(SvgColorTest, IsAsShortAsItCanBe)
{
    EXPECT_EQ(SvgColor({0xFF, 0xFF, 0xFF}), "#fff");
    EXPECT_EQ(SvgColor({0x1F, 0x49, 0x7D}), "#1f497d");
    EXPECT_EQ(SvgColor({0x11, 0x22, 0x34}), "#112234");
}

} // namespace
} // namespace orrery::look
