#include "engines/builtin/xlsx/package/relationships.h"

#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
const std::string kSheetRelation = "<Relationship Id=\"rId1\" Type=\"http://x/worksheet\" "
                                   "Target=\"worksheets/sheet1.xml\"/>";
const std::string kLink = "<Relationship Target='http://a.b/?c=d&amp;e=f'  TargetMode='External' "
                          "Type='http://x/hyperlink' Id='rId7'></Relationship>";
const std::string kEnd = "</Relationships>";

Relationships Parse(const std::string& xml)
{
    return Relationships::Parse(xml, "/xl/_rels/workbook.xml.rels");
}

TEST(Relationships, ReadsEntries)
{
    const Relationships all = Parse(kHead + kSheetRelation + kLink + kEnd);
    ASSERT_EQ(all.All().size(), 2U);
    EXPECT_EQ(all.All()[0],
              (Relationship{"rId1", "http://x/worksheet", "worksheets/sheet1.xml", false}));
    EXPECT_EQ(all.All()[1],
              (Relationship{"rId7", "http://x/hyperlink", "http://a.b/?c=d&e=f", true}));
}

TEST(Relationships, ReadsPrefixedElements)
{
    const Relationships all =
        Parse("<r:Relationships xmlns:r=\"u\"><!-- c --><r:Relationship Id=\"a\" "
              "Type=\"t/styles\" Target=\"s.xml\"/></r:Relationships>");
    ASSERT_EQ(all.All().size(), 1U);
    EXPECT_EQ(all.All()[0].Id, "a");
}

TEST(Relationships, FindsByIdAndType)
{
    const Relationships all = Parse(kHead + kSheetRelation + kLink + kEnd);
    EXPECT_EQ(all.FindById("rId7"), &all.All()[1]);
    EXPECT_EQ(all.FindById("RID7"), nullptr);
    EXPECT_EQ(all.FindByType("worksheet"), &all.All()[0]);
    EXPECT_EQ(all.FindByType("sheet"), nullptr) << "the whole last step of the URI counts";
    EXPECT_EQ(all.FindByType("image"), nullptr);
}

TEST(Relationships, KnowsBothFamiliesOfTypes)
{
    const std::string transitional =
        "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument";
    const std::string strict =
        "http://purl.oclc.org/ooxml/officeDocument/relationships/officeDocument";
    EXPECT_TRUE((Relationship{"", transitional, "", false}).Is("officeDocument"));
    EXPECT_TRUE((Relationship{"", strict, "", false}).Is("officeDocument"));
    EXPECT_FALSE((Relationship{"", "officeDocument", "", false}).Is("officeDocument"));
}

TEST(Relationships, UnchangedStayAsTheyWere)
{
    const std::string xml = kHead + "\n <!-- c -->" + kSheetRelation + kLink + kEnd + "\n";
    EXPECT_EQ(Parse(xml).ToXml(), xml);
}

TEST(Relationships, NewIdsAreFreeHoweverOthersAreNumbered)
{
    Relationships all = Parse(kHead +
                              "<Relationship Id=\"rId2\" Type=\"a\" Target=\"b\"/>"
                              "<Relationship Id=\"rId3\" Type=\"a\" Target=\"b\"/>" +
                              kEnd);
    EXPECT_EQ(all.Add("a", "c"), "rId4");
    EXPECT_EQ(all.DuplicateId(), nullptr);
}

TEST(Relationships, ReportsADuplicateId)
{
    const std::string twice = "<Relationship Id=\"x\" Type=\"a\" Target=\"b\"/>"
                              "<Relationship Id=\"x\" Type=\"a\" Target=\"c\"/>";
    Relationships all = Parse(kHead + twice + kEnd);
    ASSERT_NE(all.DuplicateId(), nullptr);
    EXPECT_EQ(*all.DuplicateId(), "x");
    all.Change();
    EXPECT_EQ(all.ToXml(), kHead + twice + kEnd) << "both stay";
}

TEST(Relationships, ChangesOnlyWhatChanged)
{
    Relationships all = Parse(kHead + kSheetRelation + kLink + kEnd);
    all.Change()[0].Target = "worksheets/sheet2.xml";
    EXPECT_EQ(all.ToXml(), kHead +
                               "<Relationship Id=\"rId1\" Type=\"http://x/worksheet\" "
                               "Target=\"worksheets/sheet2.xml\"/>" +
                               kLink + kEnd);
}

TEST(Relationships, AddsAtTheEndWithAFreeId)
{
    Relationships all = Parse(kHead + kSheetRelation + kLink + kEnd);
    EXPECT_EQ(all.Add("t/image", "a&b.png"), "rId3");
    EXPECT_EQ(all.ToXml(),
              kHead + kSheetRelation + kLink +
                  "<Relationship Id=\"rId3\" Type=\"t/image\" Target=\"a&amp;b.png\"/>" + kEnd);
    for (const char* const id : {"rId4", "rId5", "rId6", "rId8"})
        EXPECT_EQ(all.Add("t/image", "b.png"), id) << "rId7 is taken";
}

TEST(Relationships, AddsSeveralInTheirOrder)
{
    Relationships all = Parse(kHead + kSheetRelation +
                              "<Relationship Id=\"rId4\" Type=\"a\" "
                              "Target=\"b\"/>" +
                              kEnd);
    EXPECT_EQ(all.AddAll({{"any", "t/x", "x.xml", false}, {"", "t/y", "y.xml", false}}),
              (std::vector<std::string>{"rId3", "rId5"}));
    ASSERT_EQ(all.All().size(), 4U);
    EXPECT_EQ(all.All()[2], (Relationship{"rId3", "t/x", "x.xml", false}));
    EXPECT_EQ(all.All()[3], (Relationship{"rId5", "t/y", "y.xml", false}));
    EXPECT_TRUE(all.AddAll({}).empty());
}

TEST(Relationships, AddsWithTheRootsPrefix)
{
    Relationships all = Parse("<r:Relationships xmlns:r=\"u\"/>");
    all.Add("t/x", "x.xml");
    EXPECT_EQ(all.ToXml(),
              "<r:Relationships xmlns:r=\"u\"><r:Relationship Id=\"rId1\" Type=\"t/x\" "
              "Target=\"x.xml\"/></r:Relationships>");
}

TEST(Relationships, Removes)
{
    Relationships all = Parse(kHead + kSheetRelation + kLink + kEnd);
    all.Remove("rId1");
    EXPECT_EQ(all.ToXml(), kHead + kLink + kEnd);
    all.Remove("nobody");
    EXPECT_EQ(all.All().size(), 1U);
}

TEST(Relationships, NewOnesMakeAWholePart)
{
    Relationships all;
    all.Add("t/x", "x.xml");
    all.Change()[0].External = true;
    EXPECT_EQ(all.ToXml(), kHead +
                               "<Relationship Id=\"rId1\" Type=\"t/x\" Target=\"x.xml\" "
                               "TargetMode=\"External\"/>" +
                               kEnd);
    EXPECT_TRUE(Parse(Relationships().ToXml()).All().empty());
}

TEST(Relationships, RefusesOtherXml)
{
    EXPECT_THROW(Parse("<Types/>"), util::Error);
    EXPECT_THROW(Parse(kHead), util::Error);
    EXPECT_THROW(Parse(kHead + kEnd + "x"), util::Error);
    EXPECT_THROW(Parse("<!DOCTYPE r><Relationships/>"), util::Error);
    EXPECT_THROW(Parse(""), util::Error);
}

} // namespace
} // namespace orrery::xlsx
