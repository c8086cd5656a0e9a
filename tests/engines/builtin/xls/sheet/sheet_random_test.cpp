#include "book/error.h"
#include "engines/builtin/xls/sheet/sheet_bytes.h"
#include "util/error.h"
#include "xls/cell_builder.h"
#include "xls/decoded_sheet.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace orrery::xls {
namespace {

using namespace test;

constexpr int kRows = 100;
constexpr int kColumns = 30;

enum class Disorder { None, Places, Doubles };

/// Makes sheets of up to `kRows` rows with gaps, cells of all kinds, and shared formulas.
class SheetMaker {
public:
    explicit SheetMaker(unsigned seed) : random_(seed) {}

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    bool Sometimes() { return Below(3) == 0; }

    std::string Make(Disorder disorder)
    {
        std::vector<std::string> pieces;
        for (int row = Below(40); row < kRows; row += Sometimes() ? 1 + Below(40) : 1)
            AddRow(static_cast<std::uint16_t>(row), pieces, disorder == Disorder::Doubles);
        if (disorder != Disorder::None)
            std::shuffle(pieces.begin(), pieces.end(), random_);
        std::string table;
        for (const std::string& piece : pieces)
            table += piece;
        return WorksheetOf((Sometimes() ? "" : IndexOf(0, 9, {0, 1, 2})) + ColumnInfoOf(3, 6, 41) +
                           DimensionsOf(0, kRows, 0, kColumns + 8) + table +
                           RecordOf(RecordType::Note, "note"));
    }

private:
    /// Adds the cells of a row and, most of the time, its ROW record.
    void AddRow(std::uint16_t row, std::vector<std::string>& pieces, bool doubles)
    {
        if (!Sometimes())
            pieces.push_back(RowOf(row, 0, kColumns + 8, Sometimes() ? 0x0180 : 0x0100, 51));
        for (int column = Below(9); column < kColumns; column += Sometimes() ? 1 + Below(9) : 1) {
            pieces.push_back(MakeCell(row, column, doubles));
            if (doubles && Sometimes())
                column = std::max(column - 4, 0);
        }
    }

    /// Moves `column` to the last column of the cell.
    std::string MakeCell(std::uint16_t row, int& column, bool doubles)
    {
        const auto first = static_cast<std::uint16_t>(column);
        const auto format = static_cast<std::uint16_t>(20 + Below(9));
        const std::vector<std::uint16_t> several(static_cast<std::size_t>(2 + Below(5)), format);
        switch (Below(7)) {
        case 0:
            column += static_cast<int>(several.size()) - 1;
            return MulBlankOf(row, first, several);
        case 1:
            column += static_cast<int>(several.size()) - 1;
            return MulRkOf(row, first, several);
        case 2:
            return LabelSstOf(row, first, format, 5);
        case 3:
            return FormulaOf(row, first, format, TextResult(), 0, "\x17") + StringOf("text");
        case 4:
            return doubles ? BlankOf(row, first, format) : MakeShared(row, first, format);
        case 5:
            return NumberOf(row, first, format, 0.5);
        default:
            return RkOf(row, first, format, 7);
        }
    }

    /// The first cell of a group, or one of the group before it.
    std::string MakeShared(std::uint16_t row, std::uint16_t column, std::uint16_t format)
    {
        auto& anchor = anchors_[Below(2)];
        if (anchor.first != 0 && Below(5) != 0)
            return FormulaOf(row, column, format, ResultOf(2), 8,
                             ExpOf(anchor.first, anchor.second));
        anchor = {row, column};
        return FormulaOf(row, column, format, TextResult(), 8, ExpOf(row, column)) +
               SharedFormulaOf(RangeOf(0, kRows, 0, kColumns + 8), 9,
                               '\x4C' + Numbers({row, column})) +
               StringOf("shared");
    }

    std::mt19937 random_;
    std::map<int, std::pair<std::uint16_t, std::uint16_t>> anchors_;
};

DecodedCell Written(std::uint16_t format, const SheetCells::Value& value)
{
    std::string bytes;
    if (const auto* text = std::get_if<SheetCells::SharedStringIndex>(&value)) {
        AppendU32(bytes, text->index);
        return {0x00FD, format, bytes, "", ""};
    }
    AppendU32(bytes, static_cast<std::uint32_t>(std::get<std::int16_t>(value) * 4 + 2));
    return {0x027E, format, bytes, "", ""};
}

std::uint16_t NewFormat(const DecodedSheet& sheet, DecodedSheet::Address cell)
{
    const auto row = sheet.rows.find(cell.first);
    if (row != sheet.rows.end() && (row->second[12] & 0x80) != 0)
        return 51;
    return cell.second >= 3 && cell.second <= 6 ? 41 : 15;
}

void WriteAtRandom(SheetMaker& random, SheetCells& cells, const DecodedSheet& before,
                   std::map<DecodedSheet::Address, DecodedCell>& expected)
{
    for (int count = random.Below(400); count > 0; --count) {
        const DecodedSheet::Address cell{random.Below(kRows + 40), random.Below(kColumns + 5)};
        SheetCells::Value value = static_cast<std::int16_t>(random.Below(65536) - 32768);
        if (random.Sometimes())
            value = SheetCells::SharedStringIndex{7};
        cells.Set(cell.first + 1, cell.second + 1, value);
        const auto old = before.cells.find(cell);
        expected[cell] = Written(
            old != before.cells.end() ? old->second.format : NewFormat(before, cell), value);
    }
}

void DropResults(std::map<DecodedSheet::Address, DecodedCell>& cells)
{
    for (auto& [address, cell] : cells)
        if (cell.type == 0x0006) {
            cell.value = EmptyResult();
            cell.flags[0] = static_cast<char>(cell.flags[0] | 1);
        }
}

class XlsRandomSheetTest : public testing::TestWithParam<Disorder> {};
TEST_P(XlsRandomSheetTest, WritesOfAnyKindReadBackAndLeaveTheRest)
{
    int handedOver = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        SheetMaker random(seed);
        const auto text = std::make_shared<SheetText>(random.Make(GetParam()), seed);
        const DecodedSheet before = DecodeSheet(text->Bytes(), seed);
        auto expected = before.cells;
        SheetCells cells(text);
        WriteAtRandom(random, cells, before, expected);
        const bool recalculate = random.Sometimes();
        if (recalculate)
            DropResults(expected);
        if (cells.Empty() && !recalculate)
            continue;

        const std::string bytes = MakeSheet(*text, text->Bytes(), &cells, recalculate, {}, 3000);
        const DecodedSheet after = DecodeSheet(bytes, 3000);
        ASSERT_EQ(after.cells, expected);
        EXPECT_EQ(after.others, before.others);
        EXPECT_EQ(after.stringReferences, cells.StringReferences());
        if (GetParam() != Disorder::Doubles) {
            EXPECT_EQ(after.faults, std::vector<std::string>());
        }
        for (const SharedFormulaPlace& shared : text->Index().sharedFormulas)
            handedOver += expected.at({shared.row, shared.column}).type != 0x0006 ? 1 : 0;

        // The new bytes can be edited again like the old ones.
        const SheetText again(bytes, 3000);
        for (const auto& [address, cell] : expected)
            ASSERT_EQ(again.FormatOf({address.first + 1, address.second + 1}), cell.format);
        EXPECT_EQ(MakeSheet(again, bytes, nullptr, false, {}, 3000), bytes);
        EXPECT_TRUE(DecodeSheet(MakeSheet(again, bytes, nullptr, false, {}, 70), 70).cells ==
                    expected);
    }
    EXPECT_TRUE(GetParam() == Disorder::Doubles || handedOver > 20) << handedOver;
}
INSTANTIATE_TEST_SUITE_P(Sheets, XlsRandomSheetTest,
                         testing::Values(Disorder::None, Disorder::Places, Disorder::Doubles));

TEST(XlsRandomSheet, DamagedSheetsAreRefusedOrWrittenInOrder)
{
    int accepted = 0;
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        SheetMaker random(seed);
        std::string bytes = random.Make(Disorder::None);
        for (int count = 1 + random.Below(4); count > 0; --count)
            bytes[static_cast<std::size_t>(random.Below(static_cast<int>(bytes.size())))] =
                static_cast<char>(random.Sometimes() ? random.Below(256) : random.Below(10));
        try {
            const auto text = std::make_shared<SheetText>(bytes);
            SheetCells cells(text);
            for (std::int32_t i = 1; i <= kRows; ++i) {
                cells.CheckWritable(i, i, Styles());
                cells.Set(i, i, static_cast<std::int16_t>(i));
                cells.Set(i, 1, SheetCells::SharedStringIndex{2});
            }
            const std::string after = MakeSheet(*text, bytes, &cells, random.Sometimes(), {}, seed);
            const SheetText again(after, seed);
            EXPECT_EQ(again.Index().stringReferences, cells.StringReferences());
            ++accepted;
        }
        catch (const util::Error& error) {
            EXPECT_TRUE(error.Kind() == book::ErrorKind::DamagedWorkbook ||
                        error.Kind() == book::ErrorKind::PartOfArray);
        }
    }
    EXPECT_GT(accepted, 100);
    EXPECT_LT(accepted, 990);
}

} // namespace
} // namespace orrery::xls
