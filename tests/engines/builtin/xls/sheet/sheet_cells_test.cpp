#include "engines/builtin/xls/sheet/sheet_cells.h"

#include "book/error.h"
#include "util/error.h"
#include "xls/cell_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

Styles TwoFormats()
{
    Styles formats;
    formats.Add(Numbers({0, 0, 0xFFF1})); // locked
    formats.Add(Numbers({0, 0, 0xFFF0}));
    return formats;
}

/// The kind and the subject of an error.
using Refusal = std::pair<util::AnyErrorKind, std::string>;

/// The error of writing a cell; nothing if it may be written.
std::optional<Refusal> ErrorAt(const std::string& sheet, std::int32_t row, std::int32_t column)
{
    try {
        SheetCells(std::make_shared<SheetText>(sheet)).CheckWritable(row, column, TwoFormats());
        return std::nullopt;
    }
    catch (const util::Error& error) {
        return Refusal(error.Kind(), error.Subject());
    }
}

TEST(XlsFormats, AreLockedByDefault)
{
    const Styles formats = TwoFormats();
    EXPECT_TRUE(formats.IsLocked(0));
    EXPECT_FALSE(formats.IsLocked(1));
    EXPECT_TRUE(formats.IsLocked(2));
    EXPECT_THROW(Styles().Add("12345"), util::Error);
}

TEST(XlsSheetCells, OnlyCellsOfTheSheetAreWritable)
{
    using book::ErrorKind;
    const std::string sheet = WorksheetOf("");
    EXPECT_EQ(ErrorAt(sheet, 1, 1), std::nullopt);
    EXPECT_EQ(ErrorAt(sheet, 65536, 256), std::nullopt);
    EXPECT_EQ(ErrorAt(sheet, 65537, 1),
              Refusal(ErrorKind::CellOutsideSheet, std::string("row 65537, column 1")));
    EXPECT_EQ(ErrorAt(sheet, 1, 257),
              Refusal(ErrorKind::CellOutsideSheet, std::string("row 1, column 257")));
    EXPECT_EQ(ErrorAt(sheet, 0, 1)->first, ErrorKind::CellOutsideSheet);
    EXPECT_EQ(ErrorAt(sheet, 1, -1)->first, ErrorKind::CellOutsideSheet);
    EXPECT_EQ(ErrorAt(BofOf(0x20) + EofRecord(), 1, 1)->first, ErrorKind::DamagedWorkbook);
}

TEST(XlsSheetCells, LockedCellsOfProtectedSheetsAndPartsOfArraysAreNot)
{
    using book::ErrorKind;
    const std::string cells = MulBlankOf(0, 0, {0, 1, 1});
    const std::string protect = RecordOf(RecordType::Protect, Numbers({1}));
    EXPECT_EQ(ErrorAt(WorksheetOf(cells), 1, 1), std::nullopt);
    EXPECT_EQ(ErrorAt(WorksheetOf(protect + cells), 1, 1),
              Refusal(ErrorKind::CellLocked, std::string("A1")));
    EXPECT_EQ(ErrorAt(WorksheetOf(protect + cells), 1, 2), std::nullopt);
    EXPECT_EQ(ErrorAt(WorksheetOf(protect + cells), 2, 1)->first, ErrorKind::CellLocked);
    EXPECT_EQ(ErrorAt(WorksheetOf(protect + ColumnInfoOf(0, 0, 1) + cells), 2, 1), std::nullopt);
    EXPECT_EQ(ErrorAt(WorksheetOf(FormulaOf(0, 0, 0, ResultOf(0), 0, ExpOf(0, 0)) +
                                  ArrayOf(RangeOf(0, 1, 0, 0), "\x1D\x01")),
                      2, 1),
              Refusal(ErrorKind::PartOfArray, std::string("A2")));
}

TEST(XlsSheetCells, OnlyTheFirstCellOfAMergedAreaTakesAValue)
{
    SheetCells cells(std::make_shared<SheetText>(WorksheetOf(MergeCellsOf({0, 1, 0, 1}))));
    cells.Set(1, 2, std::int16_t{1});
    cells.Set(2, 2, std::int16_t{1});
    EXPECT_TRUE(cells.Empty());
    EXPECT_FALSE(cells.TakesValue(2, 1));
    EXPECT_TRUE(cells.TakesValue(1, 1));
    cells.Set(1, 1, std::int16_t{1});
    EXPECT_FALSE(cells.Empty());
}

TEST(XlsSheetCells, TheLastValueCounts)
{
    SheetCells cells(std::make_shared<SheetText>(WorksheetOf("")));
    cells.Set(7, 2, std::int16_t{1});
    cells.Set(3, 9, std::int16_t{2});
    cells.Set(7, 2, SheetCells::SharedStringIndex{5});
    cells.Set(7, 1, std::int16_t{3});
    const auto written = cells.InOrder();
    ASSERT_EQ(written.size(), 3U);
    EXPECT_EQ(std::get<std::int16_t>(written[0].value), 2);
    EXPECT_EQ(std::get<std::int16_t>(written[1].value), 3);
    EXPECT_EQ(std::get<SheetCells::SharedStringIndex>(written[2].value).index, 5U);
}

TEST(XlsSheetCells, CountsReferencesToTexts)
{
    SheetCells cells(
        std::make_shared<SheetText>(WorksheetOf(LabelSstOf(0, 0, 1, 4) + LabelSstOf(0, 1, 1, 4) +
                                                LabelSstOf(0, 1, 1, 6) + BlankOf(0, 2, 1))));
    EXPECT_EQ(cells.StringReferences(), 3U);
    cells.Set(1, 2, std::int16_t{1}); // replaces both of its records
    EXPECT_EQ(cells.StringReferences(), 1U);
    cells.Set(1, 1, SheetCells::SharedStringIndex{2});
    cells.Set(1, 3, SheetCells::SharedStringIndex{2});
    cells.Set(1, 3, SheetCells::SharedStringIndex{3});
    EXPECT_EQ(cells.StringReferences(), 2U);
}

} // namespace
} // namespace orrery::xls
