#include "engines/builtin/xml/scanner.h"

#include "book/error.h"
#include "util/error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace orrery::xml {
namespace {

using Token = Scanner::Token;
using book::ErrorKind;

/// The tokens in a line: "<a" and "</a" tags, "t:" text, "c:" CDATA, "o:" others.
std::string Tokens(std::string_view xml)
{
    Scanner scanner(xml, "/part.xml");
    std::string all;
    for (auto token = scanner.Next(); token != Token::End; token = scanner.Next()) {
        if (!all.empty())
            all += '|';
        switch (token) {
        case Token::StartTag:
            all += "<" + std::string(scanner.Name());
            break;
        case Token::EndTag:
            all += "</" + std::string(scanner.Name());
            break;
        case Token::Text:
            all += "t:" + std::string(scanner.Raw());
            break;
        case Token::CData:
            all += "c:" + std::string(scanner.Raw());
            break;
        default:
            all += "o:" + std::string(scanner.Raw());
            break;
        }
    }
    return all;
}

struct ScanCase {
    const char* name;
    std::string xml;
    std::string tokens;
};

class ScanTest : public testing::TestWithParam<ScanCase> {};
TEST_P(ScanTest, GivesTokens)
{
    EXPECT_EQ(Tokens(GetParam().xml), GetParam().tokens);
}
INSTANTIATE_TEST_SUITE_P(
    WellFormed, ScanTest,
    testing::Values(ScanCase{"EmptyElement", "<a/>", "<a|</a"},
                    ScanCase{"Element", "<a></a>", "<a|</a"},
                    ScanCase{"BlanksInTags", "<a \n></a\t>", "<a|</a"},
                    ScanCase{"BlankBeforeSlash", "<a />", "<a|</a"},
                    ScanCase{"Nested", "<a><b>x</b> <c/></a>", "<a|<b|t:x|</b|t: |<c|</c|</a"},
                    ScanCase{"Prolog", "<?xml version=\"1.0\"?>\r\n<!--c--><a/>\n<?p?>",
                             "o:<?xml version=\"1.0\"?>|o:\r\n|o:<!--c-->|<a|</a|o:\n|o:<?p?>"},
                    ScanCase{"CData", "<a><![CDATA[<b>]]]]></a>", "<a|c:<![CDATA[<b>]]]]>|</a"},
                    ScanCase{"CommentWithTags", "<a><!-- <b> --></a>", "<a|o:<!-- <b> -->|</a"},
                    ScanCase{"GreaterInAttribute", "<a b='>'/>", "<a|</a"},
                    ScanCase{"SlashInAttribute", "<a b=\"/\">x</a>", "<a|t:x|</a"},
                    ScanCase{"OtherQuoteInAttribute", "<a b='\"' c=\"'\"/>", "<a|</a"},
                    ScanCase{"ReferencesInText", "<a>&amp;&#x41;</a>", "<a|t:&amp;&#x41;|</a"},
                    ScanCase{"Prefixes", "<x:a xmlns:x=\"u\"><x:b/></x:a>",
                             "<x:a|<x:b|</x:b|</x:a"},
                    ScanCase{"NamesBeyondAscii", "<\xC3\xA4/>", "<\xC3\xA4|</\xC3\xA4"}),
    [](const auto& row) { return std::string(row.param.name); });

struct RefusedXmlCase {
    const char* name;
    std::string xml;
    std::size_t offset; ///< given in the cause
};

class RefuseTest : public testing::TestWithParam<RefusedXmlCase> {};
TEST_P(RefuseTest, ThrowsDamagedWithPartAndOffset)
{
    try {
        Tokens(GetParam().xml);
        FAIL() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_THAT(error.Cause(), testing::StartsWith("/part.xml, offset " +
                                                       std::to_string(GetParam().offset) + ": "));
    }
}
INSTANTIATE_TEST_SUITE_P(
    NotWellFormed, RefuseTest,
    testing::Values(
        RefusedXmlCase{"Empty", "", 0}, RefusedXmlCase{"OnlyBlanks", " \n", 2},
        RefusedXmlCase{"OnlyDeclaration", "<?xml version=\"1.0\"?>", 21},
        RefusedXmlCase{"Text", "hello", 0}, RefusedXmlCase{"Unclosed", "<a><b></b>", 10},
        RefusedXmlCase{"Mismatched", "<a></b>", 3}, RefusedXmlCase{"LongerEndTag", "<a></ab>", 3},
        RefusedXmlCase{"ShorterEndTag", "<ab></a>", 4},
        RefusedXmlCase{"Crossed", "<a><b></a></b>", 6}, RefusedXmlCase{"EndTagFirst", "</a>", 0},
        RefusedXmlCase{"TextAfterRoot", "<a/>x", 4}, RefusedXmlCase{"SecondRoot", "<a/><b/>", 4},
        RefusedXmlCase{"EndTagAfterRoot", "<a/></a>", 4},
        RefusedXmlCase{"CDataOutside", "<![CDATA[]]><a/>", 0},
        RefusedXmlCase{"UnterminatedTag", "<a b=\"c\"", 8},
        RefusedXmlCase{"UnterminatedName", "<a", 2},
        RefusedXmlCase{"UnterminatedEndTag", "<a></a", 3},
        RefusedXmlCase{"UnterminatedValue", "<a b=\"c", 7}, RefusedXmlCase{"LoneBracket", "<", 1},
        RefusedXmlCase{"UnterminatedComment", "<a><!-- -></a>", 3},
        RefusedXmlCase{"ShortComment", "<a><!--></a>", 3},
        RefusedXmlCase{"UnterminatedCData", "<a><![CDATA[x]]</a>", 3},
        RefusedXmlCase{"UnterminatedInstruction", "<a><?p ></a>", 3},
        RefusedXmlCase{"DeclarationInside", "<a><?xml version=\"1.0\"?></a>", 3},
        RefusedXmlCase{"DeclarationWithoutVersion", "<?xml?><a/>", 0},
        RefusedXmlCase{"DeclarationInCapitals", "<?XML version=\"1.0\"?><a/>", 0},
        RefusedXmlCase{"DeclarationWithoutBlank", "<?xmlversion=\"1.0\"?><a/>", 0},
        RefusedXmlCase{"DeclarationInAnotherOrder",
                       "<?xml encoding=\"UTF-8\" version=\"1.0\"?><a/>", 0},
        RefusedXmlCase{"DeclarationOfMore", "<?xml version=\"1.0\" a=\"b\"?><a/>", 0},
        RefusedXmlCase{"NoEqualSign", "<?xml version=\"1.0\" standalon\"yes\"?><a/>", 0},
        RefusedXmlCase{"Standalone", "<?xml version=\"1.0\" standalone=\"YES\"?><a/>", 0},
        RefusedXmlCase{"OtherVersion", "<?xml version=\"2.0\"?><a/>", 0},
        RefusedXmlCase{"EncodingWithoutName", "<?xml version=\"1.0\" encoding=\"\"?><a/>", 0},
        RefusedXmlCase{"InstructionWithoutBlank", "<a><?p=q?></a>", 3},
        RefusedXmlCase{"NameOfTag", "<1a/>", 1}, RefusedXmlCase{"BlankBeforeName", "< a/>", 1},
        RefusedXmlCase{"NoBlankBetweenAttributes", "<a b=\"1\"c=\"2\"/>", 8},
        RefusedXmlCase{"NoQuotes", "<a b=1/>", 5}, RefusedXmlCase{"NoValue", "<a b/>", 4},
        RefusedXmlCase{"NoName", "<a =\"1\"/>", 3},
        RefusedXmlCase{"SlashInside", "<a / b=\"1\">", 4},
        RefusedXmlCase{"LessInAttribute", "<a b=\"<\"/>", 6},
        RefusedXmlCase{"UnknownEntity", "<a>&nbsp;</a>", 3},
        RefusedXmlCase{"BareAmpersand", "<a>a & b</a>", 5},
        RefusedXmlCase{"UnfinishedEntity", "<a>&amp</a>", 3},
        RefusedXmlCase{"BadReference", "<a>&#xFFFF;</a>", 3},
        RefusedXmlCase{"EntityInAttribute", "<a b=\"&x;\"/>", 6},
        RefusedXmlCase{"ControlCharacter", "<a>\x01</a>", 3},
        RefusedXmlCase{"ControlCharacterInAttribute", "<a b=\"\x01\"/>", 6},
        RefusedXmlCase{"Zero", std::string("<a>\0</a>", 8), 3},
        RefusedXmlCase{"DocumentType", "<!DOCTYPE a><a/>", 0},
        RefusedXmlCase{"DocumentTypeWithEntities", "<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>", 0},
        RefusedXmlCase{"DocumentTypeInside", "<a><!DOCTYPE a></a>", 3},
        RefusedXmlCase{"EntityDeclaration", "<a><!ENTITY b \"c\"></a>", 3}),
    [](const auto& row) { return std::string(row.param.name); });

std::string Nested(std::size_t levels)
{
    std::string xml;
    for (std::size_t i = 0; i < levels; ++i)
        xml += "<a>";
    for (std::size_t i = 0; i < levels; ++i)
        xml += "</a>";
    return xml;
}

TEST(Scanner, ReadsDownToTheDeepestLevel)
{
    EXPECT_NO_THROW(Tokens(Nested(Scanner::kMaxDepth)));
}

TEST(Scanner, RefusesOneLevelMore)
{
    try {
        Tokens(Nested(Scanner::kMaxDepth + 1));
        FAIL() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::TooDeeplyNested);
        EXPECT_EQ(error.Cause(), "/part.xml");
    }
}

TEST(Scanner, CausesWithoutAPartNameBeginWithTheOffset)
{
    try {
        Scanner scanner("x");
        scanner.Next();
        FAIL() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_THAT(error.Cause(), testing::StartsWith("offset 0: "));
    }
}

/// A scanner at the first start tag of that name.
Scanner At(std::string_view xml, std::string_view name)
{
    Scanner scanner(xml, "/part.xml");
    while (scanner.Next() != Token::StartTag || scanner.Name() != name) {
    }
    return scanner;
}

TEST(Scanner, TokensKnowTheirPlace)
{
    Scanner scanner("<a>xy<b/></a>");
    struct Place {
        Token token;
        std::size_t begin;
        std::size_t end;
        std::size_t depth;
    };
    for (const Place& place : {Place{Token::StartTag, 0, 3, 1}, Place{Token::Text, 3, 5, 1},
                               Place{Token::StartTag, 5, 9, 2}, Place{Token::EndTag, 9, 9, 1},
                               Place{Token::EndTag, 9, 13, 0}, Place{Token::End, 13, 13, 0},
                               Place{Token::End, 13, 13, 0}}) {
        EXPECT_EQ(scanner.Next(), place.token);
        EXPECT_EQ(scanner.Begin(), place.begin);
        EXPECT_EQ(scanner.End(), place.end);
        EXPECT_EQ(scanner.Depth(), place.depth);
    }
}

TEST(Scanner, FindsAttributes)
{
    const std::string xml = "<c r=\"A1\"  s = '1&amp;2'\n\tx:t=\"\"/>";
    const Scanner scanner = At(xml, "c");
    ASSERT_EQ(scanner.Attributes().size(), 3U);
    EXPECT_EQ(scanner.AttributeText("r"), "A1");
    EXPECT_EQ(scanner.Attribute("s")->raw, "1&amp;2");
    EXPECT_EQ(scanner.AttributeText("s"), "1&2");
    EXPECT_EQ(scanner.AttributeText("x:t"), "");
    EXPECT_EQ(scanner.AttributeText("t"), std::nullopt);
    EXPECT_EQ(scanner.Attribute("S"), std::nullopt);
}

TEST(Scanner, DecodesReferencesInAttributes)
{
    const std::string xml = "<c r=\"A&#x31;\" s=\"&#0000000000000000000000000000000000050;\"/>";
    const Scanner scanner = At(xml, "c");
    std::string decoded;
    EXPECT_EQ(scanner.Attribute("r")->Value(decoded), "A1");
    EXPECT_TRUE(scanner.Attribute("s")->Is("2"));
    EXPECT_FALSE(scanner.Attribute("s")->Is("&#x32;"));
}

TEST(Scanner, RefusesADuplicateAttribute)
{
    std::string many = "<a";
    for (int i = 0; i < 40; ++i)
        many += " a" + std::to_string(i) + "=\"\"";
    const auto read = [](const std::string& xml) {
        Scanner scanner(xml);
        scanner.Next();
    };
    EXPECT_NO_THROW(read(many + "/>"));
    EXPECT_THROW(read(many + " a7=\"\"/>"), util::Error);
    EXPECT_THROW(read("<a b=\"1\" c=\"\" b=\"1\"/>"), util::Error);
}

TEST(Scanner, KnowsAnyNumberOfPrefixesInScope)
{
    std::string xml = "<a xmlns:p=\"outer\"";
    for (int i = 0; i < 1000; ++i)
        xml += " xmlns:n" + std::to_string(i) + "=\"u" + std::to_string(i) + "\"";
    xml += "><b xmlns:p=\"in&#110;er\"><c/></b><d/></a>";
    Scanner scanner(xml);
    const auto enter = [&](std::string_view name) {
        while (scanner.Next() != Scanner::Token::StartTag || scanner.Name() != name) {
        }
    };
    enter("c");
    EXPECT_EQ(scanner.NamespaceUri("p"), "inner");
    EXPECT_EQ(scanner.NamespaceUri("n999"), "u999");
    enter("d");
    EXPECT_EQ(scanner.NamespaceUri("p"), "outer");
    EXPECT_EQ(scanner.NamespaceUri("q"), "");
}

TEST(Scanner, ChecksPrefixesOnRequest)
{
    const auto check = [](const std::string& xml) {
        Scanner scanner(xml);
        scanner.Next();
        scanner.CheckPrefixes();
    };
    EXPECT_NO_THROW(check("<p:a xmlns:p=\"u\" p:b=\"\" xml:space=\"preserve\"/>"));
    EXPECT_THROW(check("<p:a/>"), util::Error);
    EXPECT_THROW(check("<a p:b=\"\"/>"), util::Error);
}

TEST(Scanner, RefusesTwoHyphensInAComment)
{
    Scanner scanner("<!-- a -- b --><a/>");
    EXPECT_THROW(scanner.Next(), util::Error);
}

TEST(Scanner, AttributesKnowTheirPlace)
{
    const std::string xml = "<c  r=\"A1\" s = '1'/>";
    const Scanner scanner = At(xml, "c");
    const auto r = scanner.Attribute("r").value();
    EXPECT_EQ(xml.substr(r.begin, r.end - r.begin), "  r=\"A1\"");
    EXPECT_EQ(xml.substr(r.valueBegin, r.raw.size()), "A1");
    const auto s = scanner.Attribute("s").value();
    EXPECT_EQ(xml.substr(s.begin, s.end - s.begin), " s = '1'");
    EXPECT_EQ(s.valueBegin, xml.find('1', r.end));
}

TEST(Scanner, AttributesEndWithTheirTag)
{
    Scanner scanner("<a b=\"1\"><c/></a>");
    scanner.Next();
    EXPECT_EQ(scanner.Attributes().size(), 1U);
    scanner.Next();
    EXPECT_TRUE(scanner.Attributes().empty());
    scanner.Next();
    scanner.Next();
    EXPECT_EQ(scanner.Name(), "a");
    EXPECT_TRUE(scanner.Attributes().empty());
}

TEST(Scanner, SplitsNames)
{
    const Scanner prefixed = At("<x:row/>", "x:row");
    EXPECT_EQ(prefixed.Prefix(), "x");
    EXPECT_EQ(prefixed.LocalName(), "row");
    const Scanner plain = At("<row/>", "row");
    EXPECT_EQ(plain.Prefix(), "");
    EXPECT_EQ(plain.LocalName(), "row");
}

TEST(Scanner, ResolvesNamespaces)
{
    Scanner scanner("<a xmlns='outer' xmlns:p='one'><b xmlns='inner' xmlns:p='two'><p:c/></b>"
                    "<p:d/><e xmlns=''/><q:f/></a>");
    std::string seen;
    for (auto token = scanner.Next(); token != Token::End; token = scanner.Next())
        seen += std::string(scanner.Name()) + "=" + std::string(scanner.NamespaceUri()) + " ";
    EXPECT_EQ(seen,
              "a=outer b=inner p:c=two p:c=two b=inner p:d=one p:d=one e= e= q:f= q:f= a=outer ");
}

TEST(Scanner, ResolvesOtherPrefixes)
{
    const Scanner scanner = At("<a xmlns='main' xmlns:r='rel'/>", "a");
    EXPECT_EQ(scanner.NamespaceUri("r"), "rel");
    EXPECT_EQ(scanner.NamespaceUri("xml"), "http://www.w3.org/XML/1998/namespace");
    EXPECT_EQ(scanner.NamespaceUri("z"), "");
}

TEST(Scanner, SiblingsDoNotInheritNamespaces)
{
    Scanner scanner("<a><b xmlns:p='one'/><p:c/></a>");
    while (scanner.Next() != Token::StartTag || scanner.Name() != "p:c") {
    }
    EXPECT_EQ(scanner.NamespaceUri(), "");
}

TEST(Scanner, SkipsElements)
{
    const std::string xml = "<a><b><b/>x<c><!-- --></c></b><d/></a>";
    Scanner scanner = At(xml, "b");
    scanner.SkipElement();
    EXPECT_EQ(scanner.End(), xml.find("<d/>"));
    EXPECT_EQ(scanner.Next(), Token::StartTag);
    EXPECT_EQ(scanner.Name(), "d");
    scanner.SkipElement();
    EXPECT_EQ(scanner.Next(), Token::EndTag);
    EXPECT_EQ(scanner.Name(), "a");
}

TEST(Scanner, SkippingChecksToo)
{
    Scanner scanner = At("<a><b><c></b></a>", "b");
    EXPECT_THROW(scanner.SkipElement(), util::Error);
    Scanner cut = At("<a><b>", "b");
    EXPECT_THROW(cut.SkipElement(), util::Error);
}

TEST(Scanner, ReadsElementText)
{
    const std::string xml = "<a><t>x &lt; <b>y</b><!-- no --><![CDATA[ & z]]>\r\n</t><t/></a>";
    Scanner scanner = At(xml, "t");
    EXPECT_EQ(scanner.ElementText(), "x < y & z\n");
    EXPECT_EQ(scanner.Next(), Token::StartTag);
    EXPECT_EQ(scanner.ElementText(), "");
    EXPECT_EQ(scanner.Next(), Token::EndTag);
}

} // namespace
} // namespace orrery::xml
