#include "xls/look/look_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls::test {
namespace {

using book::CellContent;

CellContent ContentAt(const book::SheetLook& look, book::CellAddress address)
{
    const auto* cell = look.FindCell(address);
    EXPECT_NE(cell, nullptr);
    return cell != nullptr ? cell->content : CellContent();
}

std::string RkOfBits(std::uint32_t bits)
{
    return RecordOf(RecordType::Rk, Numbers({0, 0, 15}) + LongNumber(bits));
}

TEST(CellReaderTest, ReadsNumbers)
{
    EXPECT_EQ(ContentAt(LookOf(NumberOf(4, 2, 15, 1.25)), {5, 3}), CellContent(1.25));
    EXPECT_EQ(ContentAt(LookOf(RkOf(0, 0, 15, -7)), {1, 1}), CellContent(-7.0));
    // Hundredths of a whole number, and the upper half of a double. [MS-XLS] 2.5.217
    EXPECT_EQ(ContentAt(LookOf(RkOfBits(314U << 2 | 3)), {1, 1}), CellContent(3.14));
    EXPECT_EQ(ContentAt(LookOf(RkOfBits(0x3FF80000)), {1, 1}), CellContent(1.5));
}

TEST(CellReaderTest, ReadsManyCellsOfOneRecord)
{
    const auto look = LookOf(MulRkOf(2, 1, {5, 6}) + MulBlankOf(3, 0, {15, 15, 15}));
    ASSERT_EQ(look.cells.size(), 5U);
    EXPECT_EQ(ContentAt(look, {3, 2}), CellContent(5.0));
    EXPECT_EQ(ContentAt(look, {3, 3}), CellContent(6.0));
    EXPECT_EQ(ContentAt(look, {4, 3}), CellContent());
}

TEST(CellReaderTest, ReadsTruthAndErrors)
{
    const auto look = LookOf(RecordOf(RecordType::BoolErr, Numbers({0, 0, 15}) + "\1" + '\0') +
                             RecordOf(RecordType::BoolErr, Numbers({0, 1, 15}) + "\x2A\1"));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent(true));
    EXPECT_EQ(ContentAt(look, {1, 2}), CellContent(book::CellError::NotAvailable));
}

/// A table of one text with runs: pairs of the first character and the font.
std::string RichTable(std::u16string_view text, const std::vector<std::uint16_t>& runs)
{
    std::string data = LongNumber(1) + LongNumber(1);
    AppendU16(data, static_cast<std::uint16_t>(text.size()));
    AppendU8(data, 0x09); // wide, with runs
    AppendU16(data, static_cast<std::uint16_t>(runs.size() / 2));
    AppendCharacters(data, text, true);
    return RecordOf(RecordType::Sst, data + Numbers(runs));
}

TEST(CellReaderTest, ReadsTextsWithRuns)
{
    const auto fonts = FontOf({}) + FontOf({.name = "B"}) + FontOf({.name = "C"});
    const auto look = LookOf(LabelSstOf(0, 0, 15, 0) + LabelSstOf(1, 0, 15, 0),
                             fonts + RichTable(u"äöz!", {1, 1, 2, 2, 9, 1}));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent("äöz!"));
    ASSERT_EQ(look.richTexts.size(), 1U);
    EXPECT_EQ(look.cells[0].richText, 0);
    EXPECT_EQ(look.cells[1].richText, 0);
    ASSERT_EQ(look.richTexts[0].size(), 2U);
    EXPECT_EQ(look.richTexts[0][0].begin, 2U); // bytes of UTF-8
    EXPECT_EQ(look.richTexts[0][0].font.name, "B");
    EXPECT_EQ(look.richTexts[0][1].begin, 4U);
    EXPECT_EQ(look.richTexts[0][1].font.name, "C");
}

TEST(CellReaderTest, TextThatIsNotInTheTableIsLeftOut)
{
    const auto look = LookOf(LabelSstOf(0, 0, 15, 3), TextTableOf({"a"}, 1));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent());
    const std::vector<book::LeftOut> expected = {
        {"text", "A1", "it is not in the workbook's table of texts"}};
    EXPECT_EQ(look.leftOut, expected);
}

TEST(CellReaderTest, ReadsTextsOfCells)
{
    std::string label = Numbers({0, 0, 15});
    AppendUnicodeString(label, "Mo");
    const auto rich = label + Numbers({1, 1, 1});
    const auto look = LookOf(RecordOf(RecordType::Label, label));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent("Mo"));
    const auto formatted =
        LookOf(RecordOf(RecordType::RichString, rich), FontOf({}) + FontOf({.name = "B"}));
    EXPECT_EQ(ContentAt(formatted, {1, 1}), CellContent("Mo"));
    ASSERT_EQ(formatted.richTexts.size(), 1U);
    EXPECT_EQ(formatted.richTexts[0][0].begin, 1U);
    EXPECT_EQ(formatted.richTexts[0][0].font.name, "B");
}

TEST(CellReaderTest, CellsAreInOrderAndTheLaterOneCounts)
{
    const auto look =
        LookOf(RkOf(3, 0, 15, 1) + RkOf(1, 5, 15, 2) + RkOf(1, 2, 15, 3) + RkOf(3, 0, 15, 4));
    ASSERT_EQ(look.cells.size(), 3U);
    EXPECT_EQ(look.cells[0].address, (book::CellAddress{2, 3}));
    EXPECT_EQ(look.cells[1].address, (book::CellAddress{2, 6}));
    EXPECT_EQ(ContentAt(look, {4, 1}), CellContent(4.0));
}

TEST(CellReaderTest, CellsOutsideTheSheetAreIgnored)
{
    EXPECT_TRUE(LookOf(RkOf(0, 256, 15, 1)).cells.empty());
    EXPECT_EQ(LookOf(MulBlankOf(0, 254, {15, 15, 15, 15})).cells.size(), 2U);
}

TEST(CellReaderTest, UnknownFormatIsTheDefaultOne)
{
    EXPECT_EQ(LookOf(BlankOf(0, 0, 4000)).cells[0].style, 0U);
}

TEST(CellReaderTest, DamagedCellIsLeftOutAndTheRestIsRead)
{
    const auto look = LookOf(RecordOf(RecordType::Number, Numbers({0, 0, 15})) + RkOf(1, 0, 15, 5));
    EXPECT_EQ(ContentAt(look, {2, 1}), CellContent(5.0));
    ASSERT_EQ(look.leftOut.size(), 1U);
}

TEST(CellReaderTest, ReadsFormulasAndTheirResults)
{
    const std::string sum =
        "\x1E\x03" + std::string(1, '\0') + "\x1E\x04" + std::string(1, '\0') + "\x03";
    const auto look = LookOf(FormulaOf(0, 0, 15, ResultOf(7), 0, sum) +
                             FormulaOf(1, 0, 15, TextResult(), 0, sum) + StringOf("seven") +
                             FormulaOf(2, 0, 15, EmptyResult(), 0, sum) +
                             FormulaOf(3, 0, 15, {"\1\0\1\0\0\0\xFF\xFF", 8}, 0, sum) +
                             FormulaOf(4, 0, 15, {"\2\0\x07\0\0\0\xFF\xFF", 8}, 0, sum));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent(7.0));
    EXPECT_EQ(ContentAt(look, {2, 1}), CellContent("seven"));
    EXPECT_EQ(ContentAt(look, {3, 1}), CellContent(""));
    EXPECT_EQ(ContentAt(look, {4, 1}), CellContent(true));
    EXPECT_EQ(ContentAt(look, {5, 1}), CellContent(book::CellError::DivisionByZero));
    ASSERT_EQ(look.formulas.size(), 5U);
    EXPECT_EQ(look.formulas[0].text, "3+4");
}

TEST(CellReaderTest, SharedFormulasAreWrittenOut)
{
    // The cell to the left, relative: PtgRefN with column -1. [MS-XLS] 2.5.198.88
    const std::string left = '\x4C' + Numbers({0, 0xC0FF});
    const auto look = LookOf(FormulaOf(0, 1, 15, ResultOf(0), 8, ExpOf(0, 1)) +
                             SharedFormulaOf(RangeOf(0, 1, 1, 1), 2, left) +
                             FormulaOf(1, 1, 15, ResultOf(0), 8, ExpOf(0, 1)));
    ASSERT_EQ(look.formulas.size(), 2U);
    EXPECT_EQ(look.formulas[0].text, "A1");
    EXPECT_EQ(look.formulas[1].text, "A2");
}

TEST(CellReaderTest, ArrayFormulaStandsAtItsFirstCell)
{
    const std::string one = "\x1E\x01" + std::string(1, '\0');
    const auto look = LookOf(FormulaOf(0, 0, 15, ResultOf(1), 0, ExpOf(0, 0)) +
                             ArrayOf(RangeOf(0, 1, 0, 0), one) +
                             FormulaOf(1, 0, 15, ResultOf(1), 0, ExpOf(0, 0)));
    ASSERT_EQ(look.formulas.size(), 1U);
    EXPECT_EQ(look.formulas[0].text, "1");
    EXPECT_EQ(look.formulas[0].array, (book::CellRange{{1, 1}, {2, 1}}));
    EXPECT_EQ(look.cells[0].formula, 0);
    EXPECT_EQ(look.cells[1].formula, -1);
    EXPECT_EQ(ContentAt(look, {2, 1}), CellContent(1.0));
}

TEST(CellReaderTest, FormulaThatCannotBeReadKeepsItsResult)
{
    const auto look = LookOf(FormulaOf(0, 0, 15, ResultOf(2), 0, "\x7F"));
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent(2.0));
    EXPECT_EQ(look.cells[0].formula, -1);
    const std::vector<book::LeftOut> expected = {{"formula", "A1", "it cannot be read"}};
    EXPECT_EQ(look.leftOut, expected);
}

TEST(CellReaderTest, TextOfAFormulaMayBeContinued)
{
    std::string text = RecordOf(RecordType::String, Numbers({4}) + std::string("\0ab", 3)) +
                       RecordOf(RecordType::Continue, std::string("\1c\0\xAC\x20", 5));
    const auto look = LookOf(FormulaOf(0, 0, 15, TextResult(), 0, "\x16") + text);
    EXPECT_EQ(ContentAt(look, {1, 1}), CellContent("abc€"));
}

TEST(CellReaderTest, ChartsInASheetHaveNoCells)
{
    const auto chart = BofOf(0x20) + RkOf(8, 8, 15, 1) + EofRecord();
    const auto look = LookOf(RkOf(0, 0, 15, 1) + chart + RkOf(1, 0, 15, 2));
    EXPECT_EQ(look.cells.size(), 2U);
}

TEST(CellReaderTest, TextsHaveALimit)
{
    // 10,000 cells with a text of 32,000 characters would need 320 MB.
    std::string cells;
    for (std::uint16_t row = 0; row < 10'000; ++row)
        cells += LabelSstOf(row, 0, 15, 0);
    const auto look = LookOf(cells, TextTableOf({std::string(8000, 'x')}, 1) + "");
    EXPECT_EQ(look.cells.size(), 10'000U);
    EXPECT_TRUE(look.leftOut.empty());
    std::string large = LongNumber(1) + LongNumber(1);
    AppendU16(large, 32'000);
    AppendU8(large, 0);
    large.append(8000, 'x');
    std::string table = RecordOf(RecordType::Sst, large);
    for (int i = 0; i < 4; ++i)
        table += RecordOf(RecordType::Continue, std::string(1, '\0') + std::string(6000, 'x'));
    const auto limited = LookOf(cells, table);
    EXPECT_EQ(limited.cells.size(), 10'000U);
    ASSERT_FALSE(limited.leftOut.empty());
    EXPECT_EQ(limited.leftOut[0].reason, "the sheet has more than 128 MiB of it");
}

} // namespace
} // namespace orrery::xls::test
