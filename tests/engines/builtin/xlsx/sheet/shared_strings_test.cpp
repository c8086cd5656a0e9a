#include "book/error.h"
#include "engines/builtin/xlsx/sheet/shared_strings.h"
#include "engines/common/cell_text.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace orrery::xlsx {
namespace {

using engines::kMaxTextLength;

constexpr const char* kNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";

SharedStrings ReadStrings(std::string_view xml)
{
    return {std::make_shared<const std::string>(xml), "/xl/sharedStrings.xml", kNamespace};
}

struct AddCase {
    const char* name;
    std::string before;
    std::vector<std::string> texts;
    std::vector<std::size_t> indexes;
    std::string after;
};
class SharedStringsTest : public testing::TestWithParam<AddCase> {};
TEST_P(SharedStringsTest, AddsAfterTheOldStrings)
{
    SharedStrings strings = ReadStrings(GetParam().before);
    for (std::size_t i = 0; i < GetParam().texts.size(); ++i)
        EXPECT_EQ(strings.IndexOf(GetParam().texts[i]), GetParam().indexes[i]) << i;
    EXPECT_EQ(strings.ToXml(5), GetParam().after);
    EXPECT_EQ(strings.Changed(), GetParam().before != GetParam().after);
}
INSTANTIATE_TEST_SUITE_P(
    Parts, SharedStringsTest,
    testing::Values(
        AddCase{
            "NewAfterOld",
            R"(<sst xmlns="u" count="9" uniqueCount="1"><si><t>Mon</t></si></sst>)",
            {"Tue", "Wed", "Tue"},
            {1, 2, 1},
            R"(<sst xmlns="u" count="14" uniqueCount="3"><si><t>Mon</t></si><si><t>Tue</t></si><si><t>Wed</t></si></sst>)"},
        AddCase{
            "CountsThatLie",
            R"(<sst count="0" uniqueCount="0"><si><t>Mon</t></si><si><t>Tue</t></si></sst>)",
            {"Tue", "January"},
            {1, 2},
            R"(<sst count="5" uniqueCount="3"><si><t>Mon</t></si><si><t>Tue</t></si><si><t>January</t></si></sst>)"},
        AddCase{
            "OldIsUsedAgain",
            R"(<sst count="9"><si><t>Mon</t></si><si><t>Tue</t></si><si><t>Mon</t></si></sst>)",
            {"Tue", "Mon"},
            {1, 0},
            R"(<sst count="9"><si><t>Mon</t></si><si><t>Tue</t></si><si><t>Mon</t></si></sst>)"},
        AddCase{
            "RichTextIsNotPlain",
            R"(<sst><si><r><t>Mon</t></r></si><si><t>Mon</t><rPh sb="0" eb="1"><t>m</t></rPh></si><si><t>Mon</t><phoneticPr fontId="1"/></si></sst>)",
            {"Mon"},
            {3},
            R"(<sst><si><r><t>Mon</t></r></si><si><t>Mon</t><rPh sb="0" eb="1"><t>m</t></rPh></si><si><t>Mon</t><phoneticPr fontId="1"/></si><si><t>Mon</t></si></sst>)"},
        AddCase{"BlanksCountOnlyWherePreserved",
                R"(<sst><si><t> a</t></si><si><t xml:space="preserve"> a</t></si></sst>)",
                {" a"},
                {1},
                R"(<sst><si><t> a</t></si><si><t xml:space="preserve"> a</t></si></sst>)"},
        AddCase{"NewBlanksArePreserved",
                R"(<sst></sst>)",
                {" a", "a ", "a b", "a\nb", ""},
                {0, 1, 2, 3, 4},
                "<sst><si><t xml:space=\"preserve\"> a</t></si><si><t xml:space=\"preserve\">a "
                "</t></si><si><t>a b</t></si><si><t "
                "xml:space=\"preserve\">a\nb</t></si><si><t></t></si></sst>"},
        AddCase{
            "TextsStayTexts",
            R"(<sst/>)",
            {"12", "=1+1", "<&>\"'"},
            {0, 1, 2},
            "<sst><si><t>12</t></si><si><t>=1+1</t></si><si><t>&lt;&amp;&gt;\"'</t></si></sst>"},
        AddCase{"EntitiesAreRead",
                R"(<sst><si><t>Caf&#233; &amp; <![CDATA[<b>]]></t></si></sst>)",
                {"Caf\xC3\xA9 & <b>"},
                {0},
                R"(<sst><si><t>Caf&#233; &amp; <![CDATA[<b>]]></t></si></sst>)"},
        AddCase{"EscapesAreCompared",
                R"(<sst><si><t>_x005F_x0041_</t></si></sst>)",
                {"_x0041_", "a\rb"},
                {0, 1},
                R"(<sst><si><t>_x005F_x0041_</t></si><si><t>a_x000D_b</t></si></sst>)"},
        AddCase{"Prefix",
                R"(<x:sst xmlns:x="u" uniqueCount="0" />)",
                {"a"},
                {0},
                R"(<x:sst xmlns:x="u" uniqueCount="1" ><x:si><x:t>a</x:t></x:si></x:sst>)"},
        AddCase{"BeforeExtensions",
                "<sst>\n <si>\n  <t>a</t>\n </si>\n <extLst/>\n</sst>",
                {"b", "a"},
                {1, 0},
                "<sst>\n <si>\n  <t>a</t>\n </si><si><t>b</t></si>\n <extLst/>\n</sst>"},
        AddCase{"OnlyExtensions",
                "<sst> <extLst/></sst>",
                {"b"},
                {0},
                "<sst><si><t>b</t></si> <extLst/></sst>"},
        AddCase{"EmptyItem",
                "<sst><si/><si><t/></si></sst>",
                {""},
                {1},
                "<sst><si/><si><t/></si></sst>"},
        AddCase{"SomethingElseForACount",
                R"(<sst count="many"></sst>)",
                {"b"},
                {0},
                R"(<sst count="many"><si><t>b</t></si></sst>)"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(SharedStrings, CreatesAMissingPart)
{
    SharedStrings strings(nullptr, "/xl/sharedStrings.xml", kNamespace);
    EXPECT_FALSE(strings.Changed());
    EXPECT_EQ(strings.IndexOf("January"), 0U);
    EXPECT_EQ(strings.IndexOf("Monday"), 1U);
    EXPECT_EQ(strings.IndexOf("January"), 0U);
    EXPECT_TRUE(strings.Changed());
    EXPECT_EQ(strings.ToXml(3),
              "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
              "<sst xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
              "count=\"3\" uniqueCount=\"2\"><si><t>January</t></si><si><t>Monday</t></si></sst>");
}

TEST(SharedStrings, CountNeverFallsBelowZero)
{
    SharedStrings strings = ReadStrings(R"(<sst count="2"/>)");
    strings.IndexOf("a");
    EXPECT_EQ(strings.ToXml(-3), R"(<sst count="0"><si><t>a</t></si></sst>)");
}

TEST(SharedStrings, RefusesTextsTooLongForACell)
{
    SharedStrings strings = ReadStrings("<sst/>");
    EXPECT_EQ(strings.IndexOf(std::string(kMaxTextLength, 'a')), 0U);
    try {
        strings.IndexOf(std::string(kMaxTextLength + 1, 'a'));
        FAIL() << "one character too many";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::TextTooLong);
        EXPECT_EQ(error.Subject(), std::string(30, 'a'));
    }
}

TEST(SharedStrings, CountsUtf16UnitsOfATextAndCutsItsBeginningBetweenCharacters)
{
    SharedStrings strings = ReadStrings("<sst/>");
    std::string faces; // two units, four bytes each
    for (std::size_t i = 0; i < kMaxTextLength / 2; ++i)
        faces += "\xF0\x9F\x98\x80";
    EXPECT_EQ(strings.IndexOf(faces + 'a'), 0U);
    try {
        strings.IndexOf("a" + faces + "\xC3\xA9");
        FAIL() << "one unit too many";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Subject(), "a" + faces.substr(0, 28));
    }
}

TEST(SharedStrings, RefusesDamage)
{
    EXPECT_THROW(ReadStrings("<sst><si></sst>"), util::Error);
}

} // namespace
} // namespace orrery::xlsx
