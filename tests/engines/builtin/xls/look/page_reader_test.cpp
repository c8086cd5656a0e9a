#include "xls/look/look_builder.h"

#include <gtest/gtest.h>
#include <limits>

namespace orrery::xls::test {
namespace {

std::string SetupOf(std::uint16_t paper, std::uint16_t scale, std::uint16_t flags)
{
    return RecordOf(RecordType::PageSettings, Numbers({paper, scale, 5, 2, 0, flags, 600, 600}) +
                                                  DoubleBytes(0.25) + DoubleBytes(0.75) +
                                                  Numbers({1}));
}

std::string TextRecord(RecordType type, std::string_view text)
{
    std::string data;
    AppendUnicodeString(data, text);
    return RecordOf(type, data);
}

TEST(PageReaderTest, DefaultsAreThoseOfTheFormat)
{
    const auto page = LookOf("").page;
    EXPECT_EQ(page.left, 0.75);
    EXPECT_EQ(page.top, 1);
    EXPECT_FALSE(page.isLandscape);
}

TEST(PageReaderTest, ReadsTheSettings)
{
    const auto page = LookOf(SetupOf(9, 85, 0x0081)).page; // across first, own first page
    EXPECT_EQ(page.paper, 9);
    EXPECT_EQ(page.scale, 85);
    EXPECT_TRUE(page.isLandscape);
    EXPECT_TRUE(page.isOverThenDown);
    EXPECT_EQ(page.firstPageNumber, 5);
    EXPECT_EQ(page.pagesWide, 2);
    EXPECT_EQ(page.pagesHigh, 0);
    EXPECT_EQ(page.headerMargin, 0.25);
    EXPECT_EQ(page.footerMargin, 0.75);
}

TEST(PageReaderTest, SettingsWithoutAPrinterAreThoseOfTheFormat)
{
    const auto page = LookOf(SetupOf(9, 85, 0x0004)).page;
    EXPECT_EQ(page.paper, 1);
    EXPECT_EQ(page.scale, 100);
    EXPECT_FALSE(page.isLandscape);
}

TEST(PageReaderTest, PageIsUprightUnlessItIsSaid)
{
    EXPECT_FALSE(LookOf(SetupOf(9, 100, 0x0002)).page.isLandscape);
    EXPECT_FALSE(LookOf(SetupOf(9, 100, 0x0040)).page.isLandscape);
}

TEST(PageReaderTest, ReadsMargins)
{
    const auto nan = ResultOf(std::numeric_limits<double>::quiet_NaN());
    const auto page = LookOf(RecordOf(RecordType::LeftMargin, DoubleBytes(0.5)) +
                             RecordOf(RecordType::RightMargin, nan) +
                             RecordOf(RecordType::TopMargin, DoubleBytes(-1)) +
                             RecordOf(RecordType::BottomMargin, DoubleBytes(0)))
                          .page;
    EXPECT_EQ(page.left, 0.5);
    EXPECT_EQ(page.right, 0.75);
    EXPECT_EQ(page.top, 1);
    EXPECT_EQ(page.bottom, 0);
}

TEST(PageReaderTest, ReadsSwitches)
{
    const auto page = LookOf(RecordOf(RecordType::HorizontalCenter, Numbers({1})) +
                             RecordOf(RecordType::VerticalCenter, Numbers({1})) +
                             RecordOf(RecordType::PrintGrid, Numbers({1})) +
                             RecordOf(RecordType::PrintHeadings, Numbers({1})) +
                             RecordOf(RecordType::SheetProperties, Numbers({0x0100})))
                          .page;
    EXPECT_TRUE(page.centersHorizontally && page.centersVertically);
    EXPECT_TRUE(page.printsGridLines && page.printsHeadings);
    EXPECT_TRUE(page.fitsPages);
}

TEST(PageReaderTest, ReadsBreaks)
{
    const auto page =
        LookOf(RecordOf(RecordType::HorizontalPageBreaks, Numbers({2, 20, 0, 255, 10, 0, 255})) +
               RecordOf(RecordType::VerticalPageBreaks, Numbers({1, 4, 0, 65535})))
            .page;
    EXPECT_EQ(page.rowBreaks, (std::vector<std::int32_t>{11, 21}));
    EXPECT_EQ(page.columnBreaks, (std::vector<std::int32_t>{5}));
}

TEST(PageReaderTest, ReadsHeadersAndFooters)
{
    std::string other = Numbers({0x089C, 0, 0, 0, 0, 0}) + std::string(16, '\0') +
                        Numbers({2, 0, 0, 5, 0}); // other first page
    AppendUnicodeString(other, "first");
    const auto page =
        LookOf(TextRecord(RecordType::Header, "&L&\"Arial,Bold\"x") +
               TextRecord(RecordType::Footer, "&P") + RecordOf(RecordType::HeaderFooter, other))
            .page;
    EXPECT_EQ(page.header, "&L&\"Arial,Bold\"x");
    EXPECT_EQ(page.footer, "&P");
    EXPECT_EQ(page.firstHeader, "first");
    EXPECT_EQ(page.firstFooter, "");
    EXPECT_FALSE(page.evenHeader);
    EXPECT_FALSE(page.scalesHeaders);
}

TEST(PageReaderTest, HeadersAreScaledUnlessTheFileSaysOtherwise)
{
    const auto scales = [](std::uint16_t flags) {
        const std::string other =
            Numbers({0x089C, 0, 0, 0, 0, 0}) + std::string(16, '\0') + Numbers({flags, 0, 0, 0, 0});
        return LookOf(RecordOf(RecordType::HeaderFooter, other)).page.scalesHeaders;
    };
    EXPECT_TRUE(LookOf("").page.scalesHeaders);
    EXPECT_TRUE(scales(4));
    EXPECT_FALSE(scales(8));
}

TEST(PageReaderTest, OtherViewsDoNotCount)
{
    const auto look = LookOf(RecordOf(RecordType::UserSheetViewBegin, Numbers({0})) +
                             TextRecord(RecordType::Header, "theirs") +
                             RecordOf(RecordType::UserSheetViewEnd, Numbers({1})));
    EXPECT_EQ(look.page.header, "");
}

/// A token for a range of the first sheet.
std::string AreaToken(const std::vector<std::uint16_t>& range)
{
    return '\x3B' + Numbers({0}) + Numbers(range);
}

book::SheetLook LookWithName(char name, std::string_view tokens)
{
    return LookOf("", OwnBookOf(1) + ExternSheetOf({0, 0, 0}) +
                          NameOf(std::string(1, name), 1, tokens, 0x0020));
}

TEST(PrintNamesTest, ReadsPrintAreas)
{
    const auto one = LookWithName('\x06', AreaToken({1, 8, 1, 3}));
    EXPECT_EQ(one.page.printAreas, (std::vector<book::CellRange>{{{2, 2}, {9, 4}}}));
    const auto two =
        LookWithName('\x06', AreaToken({1, 8, 1, 3}) + AreaToken({20, 21, 0, 0}) + '\x10');
    EXPECT_EQ(two.page.printAreas.size(), 2U);
}

TEST(PrintNamesTest, ReadsTitles)
{
    const auto page =
        LookWithName('\x07', AreaToken({0, 65535, 0, 1}) + AreaToken({2, 3, 0, 255}) + '\x10').page;
    EXPECT_EQ(page.titleRows, (book::CellRange{{3, 1}, {4, 256}}));
    EXPECT_EQ(page.titleColumns, (book::CellRange{{1, 1}, {65536, 2}}));
}

TEST(PrintNamesTest, DeletedAreasAreNone)
{
    const auto look = LookWithName('\x06', '\x3D' + Numbers({0, 0, 0, 0, 0}));
    EXPECT_TRUE(look.page.printAreas.empty());
    EXPECT_TRUE(look.leftOut.empty());
}

TEST(PrintNamesTest, ComputedAreasAreLeftOut)
{
    const auto look = LookWithName('\x06', '\x23' + Numbers({1, 0}));
    const std::vector<book::LeftOut> expected = {{"print area", "", "they are computed"}};
    EXPECT_EQ(look.leftOut, expected);
}

TEST(LookSourceTest, ReadsNames)
{
    LookSource source(WorkbookStream({{"A", SheetOf("")}, {"B", SheetOf("")}},
                                     OwnBookOf(2) + ExternSheetOf({0, 1, 1}) +
                                         NameOf("Days", 0, AreaToken({0, 1, 0, 0})) +
                                         NameOf("\x06", 2, AreaToken({0, 1, 0, 0}), 0x0020)));
    const auto& names = source.Look().names;
    ASSERT_EQ(names.size(), 2U);
    EXPECT_EQ(names[0].name, "Days");
    EXPECT_EQ(names[0].formula, "B!$A$1:$A$2");
    EXPECT_FALSE(names[0].sheet);
    EXPECT_EQ(names[1].name, "_xlnm.Print_Area");
    EXPECT_EQ(names[1].sheet, 1U);
}

TEST(LookSourceTest, KnowsTheKindsOfSheets)
{
    const auto dialog = SheetOf(RecordOf(RecordType::SheetProperties, Numbers({0x0010})));
    LookSource source(WorkbookStream({{"A", SheetOf("")}, {"D", dialog}},
                                     RecordOf(RecordType::DateMode, Numbers({1}))));
    EXPECT_EQ(source.Look().sheets[0].kind, book::SheetKind::Worksheet);
    EXPECT_EQ(source.Look().sheets[1].kind, book::SheetKind::Dialog);
    EXPECT_EQ(source.Look().dateSystem, book::DateSystem::From1904);
    const auto look = ReadSheetLook(source, 1);
    EXPECT_EQ(look.name, "D");
    EXPECT_EQ(look.styles.size(), 1U);
}

TEST(SheetReaderTest, SheetThatIsNotThereIsEmpty)
{
    std::string stream = WorkbookStream({{"A", SheetOf(RkOf(0, 0, 15, 1))}});
    const auto cut = stream.substr(0, stream.size() - 6); // within the cell
    LookSource source(cut);
    const auto look = ReadSheetLook(source, 0);
    EXPECT_TRUE(look.cells.empty());
    const std::vector<book::LeftOut> expected = {
        {"end of the sheet", "", "the file ends before it"}};
    EXPECT_EQ(look.leftOut, expected);
}

} // namespace
} // namespace orrery::xls::test
