#include "engines/builtin/xml/reading.h"
#include "engines/builtin/xml/tree.h"

#include <gtest/gtest.h>
#include <memory>

namespace orrery::xml {
namespace {

std::unique_ptr<Tree> ReadTree(const std::string& text, std::size_t maxNodes = 1000)
{
    Scanner scanner(text);
    EnterRoot(scanner);
    return std::make_unique<Tree>(
        scanner, [](std::string_view uri) { return uri.starts_with("known"); }, maxNodes);
}

/// The names of the children.
std::string NamesIn(const Element& element)
{
    std::string names;
    for (const Element child : element)
        names += std::string(child.Name()) + " ";
    return names;
}

TEST(Tree, ChildrenAttributesAndText)
{
    const std::string text =
        "<p:a xmlns:p='u'><p:b n='1' p:n='&lt;'/>\n<c>x<![CDATA[<y>]]>&amp;</c><b/></p:a>";
    const auto tree = ReadTree(text);
    const Element root = tree->Root();
    EXPECT_EQ(root.Name(), "a");
    EXPECT_EQ(NamesIn(root), "b c b ");
    EXPECT_EQ(root.Child("b").Attribute("n"), "1");
    EXPECT_EQ(root.Child("b").Prefixed("n"), "<");
    EXPECT_TRUE(root.Child("b").Is("n", "1"));
    EXPECT_FALSE(root.Child("c").Has("n"));
    EXPECT_EQ(root.Child("c").Text(), "x<y>&");
    EXPECT_TRUE(tree->IsWhole());
}

TEST(Tree, WhatIsAskedOfNoneIsAbsent)
{
    const auto tree = ReadTree("<a/>");
    const Element none = tree->Root().Child("b").Child("c");
    EXPECT_FALSE(none);
    EXPECT_EQ(none.Name(), "");
    EXPECT_EQ(none.Attribute("n"), "");
    EXPECT_EQ(none.Prefixed("n"), "");
    EXPECT_EQ(none.Text(), "");
    EXPECT_EQ(NamesIn(none), "");
    EXPECT_FALSE(none.Next());
}

TEST(Tree, TextsOfBlanksAreKeptWhereTheyAreAll)
{
    const std::string text = "<a><t> </t>\n <t>x</t></a>";
    EXPECT_EQ(ReadTree(text)->Root().Child("t").Text(), " ");
}

TEST(Tree, AlternateContentIsReplacedByWhatIsUnderstood)
{
    const std::string text =
        "<a xmlns:mc='http://schemas.openxmlformats.org/markup-compatibility/2006' xmlns:k='known' "
        "xmlns:l='known2' xmlns:u='unknown'><x/><mc:AlternateContent>"
        "<mc:Choice Requires='k u'><no/></mc:Choice><mc:Choice Requires=''><no/></mc:Choice>"
        "<mc:Choice Requires='k l'><y/><mc:AlternateContent><mc:Choice "
        "Requires='u'><no/></mc:Choice>"
        "<mc:Fallback><z/></mc:Fallback></mc:AlternateContent></mc:Choice>"
        "<mc:Choice Requires='k'><no/></mc:Choice><mc:Fallback><no/></mc:Fallback>"
        "</mc:AlternateContent><w/></a>";
    EXPECT_EQ(NamesIn(ReadTree(text)->Root()), "x y z w ");
}

TEST(Tree, EndsAtItsMaximum)
{
    std::string text = "<a>";
    for (int i = 0; i < 100; ++i)
        text += "<b n='1'>text</b>";
    text += "</a>";
    const auto tree = ReadTree(text, 50);
    EXPECT_FALSE(tree->IsWhole());
    std::size_t count = 0;
    for (const Element child : tree->Root())
        count += child.Name() == "b" ? 1U : 0U;
    EXPECT_GT(count, 10U);
    EXPECT_LE(count, 25U);
}

TEST(Tree, ReadsOnlyTheCurrentElement)
{
    const std::string text = "<a><b><c/></b><d/></a>";
    Scanner scanner(text);
    EnterRoot(scanner);
    scanner.Next();
    const Tree tree(
        scanner, [](std::string_view) { return false; }, 100);
    EXPECT_EQ(NamesIn(tree.Root()), "c ");
    EXPECT_EQ(scanner.Next(), Scanner::Token::StartTag);
    EXPECT_EQ(scanner.Name(), "d");
}

} // namespace
} // namespace orrery::xml
