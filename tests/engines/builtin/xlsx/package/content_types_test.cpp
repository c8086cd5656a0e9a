#include "engines/builtin/xlsx/package/content_types.h"

#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xlsx {
namespace {

const std::string kTypesHead =
    "<?xml version=\"1.0\"?>\n<Types xmlns=\"u\"><Default Extension=\"PNG\" "
    "ContentType=\"image/png\"/><Default Extension=\"xml\" "
    "ContentType=\"application/xml\"/>";
const std::string kBook = "<Override PartName=\"/xl/Workbook.xml\" ContentType=\"t/book\"/>";
const std::string kSheetOverride = "<Override ContentType='t/sheet' PartName='/xl/sheet%201.xml'/>";
const std::string kTypesEnd = "</Types>";
const std::string kAll = kTypesHead + kBook + kSheetOverride + kTypesEnd;

struct TypeCase {
    const char* name;
    std::string part;
    std::string type;
};

class ContentTypeTest : public testing::TestWithParam<TypeCase> {};
TEST_P(ContentTypeTest, FindsType)
{
    EXPECT_EQ(ContentTypes::Parse(kAll).TypeOf(GetParam().part), GetParam().type);
}
INSTANTIATE_TEST_SUITE_P(
    Parts, ContentTypeTest,
    testing::Values(TypeCase{"OwnEntry", "/xl/Workbook.xml", "t/book"},
                    TypeCase{"OwnEntryInOtherCase", "/XL/workbook.XML", "t/book"},
                    TypeCase{"OwnEntryEscaped", "/xl/sheet 1.xml", "t/sheet"},
                    TypeCase{"Extension", "/xl/media/a.png", "image/png"},
                    TypeCase{"ExtensionInOtherCase", "/xl/media/a.Png", "image/png"},
                    TypeCase{"LastExtension", "/xl/a.png.xml", "application/xml"},
                    TypeCase{"UnknownExtension", "/xl/a.bin", ""},
                    TypeCase{"NoExtension", "/xl.png/a", ""}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ContentTypes, UnchangedStayAsTheyWere)
{
    ContentTypes types = ContentTypes::Parse(kAll);
    types.Set("/xl/workbook.xml", "t/book");
    types.Set("/xl/media/b.png", "image/png");
    types.Remove("/xl/media/b.png");
    EXPECT_FALSE(types.Changed());
    EXPECT_EQ(types.ToXml(), kAll);
}

TEST(ContentTypes, AddsOwnEntriesAtTheEnd)
{
    ContentTypes types = ContentTypes::Parse(kAll);
    types.Set("/xl/sheet2.xml", "t/sheet");
    EXPECT_TRUE(types.Changed());
    EXPECT_EQ(types.TypeOf("/xl/sheet2.xml"), "t/sheet");
    EXPECT_EQ(types.ToXml(), kTypesHead + kBook + kSheetOverride +
                                 "<Override PartName=\"/xl/sheet2.xml\" ContentType=\"t/sheet\"/>" +
                                 kTypesEnd);
}

TEST(ContentTypes, ReplacesOwnEntries)
{
    ContentTypes types = ContentTypes::Parse(kAll);
    types.Set("/xl/Workbook.xml", "t/other");
    EXPECT_EQ(types.ToXml(),
              kTypesHead + "<Override PartName=\"/xl/Workbook.xml\" ContentType=\"t/other\"/>" +
                  kSheetOverride + kTypesEnd);
}

TEST(ContentTypes, RemovesOwnEntries)
{
    ContentTypes types = ContentTypes::Parse(kAll);
    types.Remove("/xl/WORKBOOK.xml");
    EXPECT_TRUE(types.Changed());
    EXPECT_EQ(types.TypeOf("/xl/workbook.xml"), "application/xml");
    EXPECT_EQ(types.ToXml(), kTypesHead + kSheetOverride + kTypesEnd);
}

TEST(ContentTypes, KeepsPrefixes)
{
    ContentTypes types = ContentTypes::Parse("<x:Types xmlns:x=\"u\"/>");
    types.Set("/a.xml", "t/a");
    EXPECT_EQ(types.ToXml(), "<x:Types xmlns:x=\"u\"><x:Override PartName=\"/a.xml\" "
                             "ContentType=\"t/a\"/></x:Types>");
}

TEST(ContentTypes, RefusesOtherXml)
{
    EXPECT_THROW(ContentTypes::Parse("<Relationships/>"), util::Error);
    EXPECT_THROW(ContentTypes::Parse("<Types>"), util::Error);
    EXPECT_THROW(ContentTypes::Parse(""), util::Error);
}

} // namespace
} // namespace orrery::xlsx
