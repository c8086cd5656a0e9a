#include "engines/builtin/xls/sheet/sheet_places.h"
#include "util/unicode.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

std::string LinkTextOf(std::string_view text)
{
    const auto units = util::ToUtf16(text);
    std::string bytes;
    AppendU32(bytes, static_cast<std::uint32_t>(units.size() + 1));
    for (const auto unit : units)
        AppendU16(bytes, unit);
    return bytes + std::string(2, '\0');
}

/// A link in the cell A1 with flags and the data after them.
std::string LinkOf(std::uint32_t flags, const std::string& rest)
{
    std::string data(8 + 16, '\0');
    AppendU32(data, 2);
    AppendU32(data, flags);
    return RecordOf(RecordType::Hyperlink, data + rest);
}

std::string SourceOf(std::string_view text)
{
    std::string data(6, '\1');
    AppendU16(data, static_cast<std::uint16_t>(util::ToUtf16(text).size()));
    AppendUnicodeStringNoCount(data, text);
    return RecordOf(RecordType::DConRef, data + "..");
}

std::string Renamed(const std::string& bytes)
{
    const auto names = [](std::string_view name) -> std::optional<std::string> {
        if (name == "Plan")
            return "Jan's";
        if (name == "Our plan")
            return "M\xC3\xA4rz";
        return std::nullopt;
    };
    TextPatch patch;
    SheetPlaces(bytes).Rename(patch, bytes, names);
    return patch.Apply(bytes);
}

TEST(SheetPlacesTest, LinksToPlacesInTheWorkbookFollow)
{
    EXPECT_EQ(Renamed(LinkOf(8, LinkTextOf("Plan!B2"))), LinkOf(8, LinkTextOf("'Jan''s'!B2")));
    EXPECT_EQ(Renamed(LinkOf(8, LinkTextOf("'Our plan'!B2"))),
              LinkOf(8, LinkTextOf("'M\xC3\xA4rz'!B2")));
    EXPECT_EQ(
        Renamed(LinkOf(0x98, LinkTextOf("shown") + LinkTextOf("frame") + LinkTextOf("Plan!A1"))),
        LinkOf(0x98, LinkTextOf("shown") + LinkTextOf("frame") + LinkTextOf("'Jan''s'!A1")));
}

TEST(SheetPlacesTest, OtherLinksStay)
{
    for (const auto& link : {LinkOf(8, LinkTextOf("Other!B2")), LinkOf(8, LinkTextOf("Name")),
                             LinkOf(9, std::string(40, 'm') + LinkTextOf("Plan!B2")),
                             LinkOf(8, LinkTextOf("'Plan")), LinkOf(3, std::string(30, 'm'))})
        EXPECT_EQ(Renamed(link), link);
}

TEST(SheetPlacesTest, ADoubledApostropheIsOneInTheName)
{
    const auto link = LinkOf(8, LinkTextOf("'it''s'!A1"));
    TextPatch patch;
    std::string asked;
    SheetPlaces(link).Rename(patch, link, [&](std::string_view name) {
        asked = name;
        return std::optional<std::string>();
    });
    EXPECT_EQ(asked, "it's");
}

TEST(SheetPlacesTest, SourcesInTheWorkbookFollow)
{
    EXPECT_EQ(Renamed(SourceOf("\x02Plan")), SourceOf("\x02Jan's"));
    EXPECT_EQ(Renamed(SourceOf("\x02Other")), SourceOf("\x02Other"));
    EXPECT_EQ(Renamed(SourceOf("\x01"
                               "file.xls\x05Plan")),
              SourceOf("\x01"
                       "file.xls\x05Plan"));
    EXPECT_EQ(Renamed(SourceOf("")), SourceOf(""));
}

TEST(SheetPlacesTest, SelectsOnlyInItsWindow)
{
    auto bytes = RecordOf(RecordType::Window2, Numbers({0x06B6, 0, 0})) +
                 RecordOf(RecordType::Blank, Numbers({0x06B6, 0, 0}));
    const SheetPlaces places(bytes);
    places.Select(bytes, false);
    EXPECT_EQ(bytes, RecordOf(RecordType::Window2, Numbers({0x00B6, 0, 0})) +
                         RecordOf(RecordType::Blank, Numbers({0x06B6, 0, 0})));
    places.Select(bytes, true);
    EXPECT_EQ(bytes.substr(0, 10), RecordOf(RecordType::Window2, Numbers({0x06B6, 0, 0})));
}

TEST(SheetPlacesTest, CustomViewsTakeTheIdOfTheCopy)
{
    auto bytes =
        RecordOf(RecordType::UserSheetViewBegin, std::string(16, 'g') + Numbers({1, 0, 9}));
    const SheetPlaces places(bytes);
    places.SetTabId(bytes, 12);
    EXPECT_EQ(bytes,
              RecordOf(RecordType::UserSheetViewBegin, std::string(16, 'g') + Numbers({12, 0, 9})));
}

std::string CodeNameOf(std::string_view name)
{
    std::string data;
    AppendUnicodeString(data, name);
    return RecordOf(RecordType::CodeName, data);
}

std::string WithCodeName(const std::string& bytes, const std::optional<std::string>& name)
{
    TextPatch patch;
    SheetPlaces(bytes).SetCodeName(patch, name);
    return patch.Apply(bytes);
}

TEST(SheetPlacesTest, ACopyHasNoCodeNameOrOneOfItsOwn)
{
    const auto bytes = BofOf(0x10) + CodeNameOf("Sheet1") + EofRecord();
    EXPECT_EQ(WithCodeName(bytes, std::nullopt), BofOf(0x10) + EofRecord());
    EXPECT_EQ(WithCodeName(bytes, "Sheet12"), BofOf(0x10) + CodeNameOf("Sheet12") + EofRecord());
    EXPECT_EQ(WithCodeName(bytes, "\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82"
                                  "4"),
              BofOf(0x10) +
                  RecordOf(RecordType::CodeName,
                           Numbers({5}) + '\1' + Numbers({0x41B, 0x438, 0x441, 0x442, '4'})) +
                  EofRecord());
}

TEST(SheetPlacesTest, OnlyOneCodeNameIsLeft)
{
    const auto twice = CodeNameOf("Sheet1") + CodeNameOf("Sheet2");
    EXPECT_EQ(WithCodeName(twice, "Sheet3"), CodeNameOf("Sheet3"));
}

TEST(SheetPlacesTest, ReadsTheCodeName)
{
    const auto named = BofOf(0x10) + CodeNameOf("Sheet1") + EofRecord();
    EXPECT_EQ(SheetPlaces(named).CodeName(named), "Sheet1");
    const auto unnamed = BofOf(0x10) + EofRecord();
    EXPECT_EQ(SheetPlaces(unnamed).CodeName(unnamed), std::nullopt);
    const auto damaged = RecordOf(RecordType::CodeName, Numbers({9}));
    EXPECT_EQ(SheetPlaces(damaged).CodeName(damaged), std::nullopt);
}

TEST(SheetPlacesTest, KnowsDialogs)
{
    EXPECT_TRUE(SheetPlaces(RecordOf(RecordType::SheetProperties, Numbers({0x04D1}))).IsDialog());
    EXPECT_FALSE(SheetPlaces(RecordOf(RecordType::SheetProperties, Numbers({0x04C1}))).IsDialog());
}

} // namespace
} // namespace orrery::xls
