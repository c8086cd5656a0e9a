#include "engines/builtin/xml/text.h"
#include "util/unicode.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xml {
namespace {

struct TextCase {
    const char* name;
    std::string from;
    std::string to;
};

class DecodeXmlTest : public testing::TestWithParam<TextCase> {};
TEST_P(DecodeXmlTest, Decodes)
{
    EXPECT_EQ(DecodeText(GetParam().from), GetParam().to);
}
INSTANTIATE_TEST_SUITE_P(
    Texts, DecodeXmlTest,
    testing::Values(TextCase{"Plain", "July", "July"}, TextCase{"Empty", "", ""},
                    TextCase{"Five", "&lt;&gt;&amp;&quot;&apos;", "<>&\"'"},
                    TextCase{"OnlyOnce", "&amp;lt;", "&lt;"},
                    TextCase{"Decimal", "a&#228;b",
                             "a\xC3\xA4"
                             "b"},
                    TextCase{"Hexadecimal", "&#xe4;&#xE4;", "\xC3\xA4\xC3\xA4"},
                    TextCase{"ThreeBytes", "&#8364;", "\xE2\x82\xAC"},
                    TextCase{"FourBytes", "&#x1F600;", "\xF0\x9F\x98\x80"},
                    TextCase{"LineEndReferenceStays", "a&#13;&#10;b", "a\r\nb"},
                    TextCase{"LineEnds", "a\r\nb\rc\nd", "a\nb\nc\nd"},
                    TextCase{"TabStays", "a\tb", "a\tb"},
                    TextCase{"UnknownStays", "&nbsp; & &#0; &#xD800; &#x; &#1114112;",
                             "&nbsp; & &#0; &#xD800; &#x; &#1114112;"},
                    TextCase{"UnfinishedStays", "a&amp", "a&amp"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(DecodeAttribute, TurnsLineEndsAndTabsIntoBlanks)
{
    EXPECT_EQ(DecodeAttribute("a\tb\r\nc\nd&#10;&amp;"), "a b c d\n&");
}

TEST(EncodeXml, EscapesForContent)
{
    EXPECT_EQ(EncodeText("<a> & \"b\"\r\n\tc"), "&lt;a&gt; &amp; \"b\"&#13;\n\tc");
    EXPECT_EQ(EncodeText(std::string("a\0b\x1f", 4)), "ab") << "XML cannot hold these";
}

TEST(EncodeXml, EscapesForAttributes)
{
    EXPECT_EQ(EncodeAttribute("<'a'> & \"b\"\r\n\t"),
              "&lt;'a'&gt; &amp; &quot;b&quot;&#13;&#10;&#9;");
}

TEST(EncodeXml, RoundTrips)
{
    std::string all;
    for (char32_t c = 0x20; c < 0x11000; ++c)
        if (c < 0xD800 || c > 0xDFFF)
            util::AppendUtf8(all, c);
    all += "\t\r\n";
    EXPECT_EQ(DecodeText(EncodeText(all)), all);
    EXPECT_EQ(DecodeAttribute(EncodeAttribute(all)), all);
}

TEST(ReferenceLength, CountsToTheSemicolon)
{
    EXPECT_EQ(ReferenceLength("&amp;x"), 5U);
    EXPECT_EQ(ReferenceLength("&#x20;"), 6U);
    EXPECT_EQ(ReferenceLength("&amp"), 0U);
    EXPECT_EQ(ReferenceLength("&bomb;"), 0U);
    EXPECT_EQ(ReferenceLength("&#1;"), 0U);
    EXPECT_EQ(ReferenceLength("&#-5;"), 0U);
    EXPECT_EQ(ReferenceLength("&"), 0U);
}

} // namespace
} // namespace orrery::xml
