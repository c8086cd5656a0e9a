#include "look/display/sheet_picture.h"

#include "look/evaluate/fake_workbook.h"
#include "look/text/font_tables.h"

#include <gtest/gtest.h>

#include <string>

namespace orrery::look {
namespace {

constexpr double kNow = 46349.5; // noon of 2026-11-23, in days since the 30th of December 1899

std::string TextOf(const SheetPicture& picture, book::CellAddress address)
{
    for (const CellBox& cell : picture.Layout().cells) {
        if (cell.range.first == address)
            return cell.display.text;
    }
    return {};
}

TEST(SheetPicture, KnowsTheDayInBothDateSystems)
{
    for (const auto dates : {book::DateSystem::From1900, book::DateSystem::From1904}) {
        FakeWorkbook book({"Sheet1"}, dates);
        book.SetFormula({1, 1}, "TEXT(TODAY(),\"yyyy-mm-dd\")");
        book.SetFormula({2, 1}, "HOUR(NOW())");
        const FontTables fonts;
        const SheetPicture picture(book, 0, fonts, {kNow, "Book.xlsx", ""});
        EXPECT_EQ(TextOf(picture, {1, 1}), "2026-11-23");
        EXPECT_EQ(TextOf(picture, {2, 1}), "12");
    }
}

TEST(SheetPicture, FontsOfRichTextsStandWhereTheNumberFormatPutsTheText)
{
    FakeWorkbook book;
    book.Set({1, 1}, std::string("plain bold"));
    book::Font bold;
    bold.bold = true;
    book.Look().richTexts = {{{6, bold}}};
    book.Look().cells.back().richText = 0;
    book.Look().styles[0].numberFormat = "\"to \"@";
    const FontTables fonts;
    const SheetPicture picture(book, 0, fonts, {kNow, "Book.xlsx", ""});
    ASSERT_EQ(picture.Layout().cells.size(), 1U);
    const auto& pieces = picture.Layout().cells[0].lines.at(0).pieces;
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].text, "to plain ");
    EXPECT_EQ(pieces[1].text, "bold");
    EXPECT_TRUE(pieces[1].font.bold);
}

} // namespace
} // namespace orrery::look
