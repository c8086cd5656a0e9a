#include "look/filled/filled_view.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace orrery::look {
namespace {

/// A template of three sheets: "Cover", "Month" with two cells, "Year".
class Template : public book::WorkbookView {
public:
    Template()
    {
        for (const char* name : {"Cover", "Month", "Year"})
            workbook_.sheets.push_back({name, {}, {}});
        workbook_.names = {{"Rate", std::nullopt, "1"}, {"First", 1, "Month!$A$1"}};
        workbook_.activeSheet = 2;
        looks_.resize(3);
        book::SheetLook& month = looks_[1];
        month.name = "Month";
        month.styles.resize(3);
        month.rows.push_back({4, std::nullopt, false, false, 2});
        month.formulas.push_back({"B1+1", std::nullopt});
        month.cells.push_back({{1, 1}, 1, 0, -1, 7.0});
        month.cells.push_back({{2, 2}, 1, -1, -1, std::string("sample")});
        for (book::SheetLook& look : looks_)
            look.styles.resize(3);
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t index) override
    {
        ++read_;
        return looks_.at(index);
    }

    int read_ = 0;

private:
    book::WorkbookLook workbook_;
    std::vector<book::SheetLook> looks_;
};

class FilledViewTest : public testing::Test {
protected:
    FilledView Fill(std::vector<FilledSheet> sheets) { return {template_, std::move(sheets)}; }

    Template template_;
};

std::vector<std::string> NamesOf(const FilledView& view)
{
    std::vector<std::string> names;
    for (const book::SheetSummary& sheet : view.Workbook().sheets)
        names.push_back(sheet.name);
    return names;
}

TEST_F(FilledViewTest, ListsTheSheetsInTheOrderOfTheCalendar)
{
    const auto view =
        Fill({{"January", "month", {}}, {"February", "month", {}}, {"2027", "Year", {}}});
    EXPECT_EQ(NamesOf(view), (std::vector<std::string>{"Cover", "January", "February", "2027"}));
    EXPECT_EQ(view.Workbook().activeSheet, 3U);
}

TEST_F(FilledViewTest, LeavesOutSheetsWithoutAModel)
{
    EXPECT_EQ(NamesOf(Fill({{"January", "Missing", {}}})),
              (std::vector<std::string>{"Cover", "Month", "Year"}));
}

TEST_F(FilledViewTest, WritesIntoCellsAndKeepsTheirStyles)
{
    auto view =
        Fill({{"January", "Month", {{{2, 2}, std::string("1")}, {{4, 9}, 31.0}, {{1, 3}, 5.0}}}});
    const book::SheetLook& look = view.Sheet(1);
    EXPECT_EQ(look.name, "January");
    ASSERT_EQ(look.cells.size(), 4U);
    EXPECT_EQ(look.cells[0].address, (book::CellAddress{1, 1}));
    EXPECT_EQ(look.cells[0].formula, 0) << "what is not written stays";
    EXPECT_EQ(look.cells[1].address, (book::CellAddress{1, 3}));
    EXPECT_EQ(std::get<std::string>(look.cells[2].content), "1");
    EXPECT_EQ(look.cells[2].style, 1U);
    EXPECT_EQ(std::get<double>(look.cells[3].content), 31.0);
    EXPECT_EQ(look.cells[3].style, 2U) << "that of its row";
}

TEST_F(FilledViewTest, AWrittenCellHasNoFormula)
{
    auto view = Fill({{"January", "Month", {{{1, 1}, 3.0}}}});
    EXPECT_EQ(view.Sheet(1).cells[0].formula, -1);
    EXPECT_EQ(view.WrittenCells(), (std::vector<book::CellOfSheet>{{1, {1, 1}}}));
}

TEST_F(FilledViewTest, ACopyMeansItselfByTheNameOfItsModel)
{
    const auto view = Fill({{"January", "Month", {}}, {"February", "Month", {}}});
    EXPECT_EQ(view.ReferencedSheet("Month", 2), 2U);
    EXPECT_EQ(view.ReferencedSheet("MONTH", 0), 1U) << "others mean the renamed sheet";
    EXPECT_EQ(view.ReferencedSheet("Cover", 2), 0U);
    EXPECT_EQ(view.ReferencedSheet("January", 2), std::nullopt) << "the template has no such sheet";
}

TEST_F(FilledViewTest, ACopyHasTheLocalNamesOfItsModel)
{
    const auto view = Fill({{"January", "Month", {}}, {"February", "Month", {}}});
    const auto& names = view.Workbook().names;
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names[0].sheet, std::nullopt);
    EXPECT_EQ(names[1].sheet, 1U);
    EXPECT_EQ(names[2].sheet, 2U);
}

TEST_F(FilledViewTest, ReadsASheetOnce)
{
    auto view = Fill({{"January", "Month", {}}});
    EXPECT_EQ(&view.Sheet(1), &view.Sheet(1));
    EXPECT_EQ(template_.read_, 1);
}

} // namespace
} // namespace orrery::look
