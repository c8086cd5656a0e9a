#include "look/advisor/propose.h"

#include "model/cell_ref.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace orrery::look {
namespace {

/// A workbook of one sheet whose cells are painted one by one.
class PaintedWorkbook : public book::WorkbookView {
public:
    enum Style : std::uint32_t { Plain, Title, Header, Day, Text, Lined, BoldDay };

    PaintedWorkbook()
    {
        workbook_.sheets.push_back({"Page", {}, {}});
        look_.name = "Page";
        look_.styles.resize(7);
        look_.styles[Title].font.size = 28;
        look_.styles[Header].alignment.horizontal = book::HorizontalAlignment::Center;
        look_.styles[Day].font.size = 16;
        look_.styles[Text].font.size = 8;
        look_.styles[Lined].border.left.style = book::LineStyle::Thin;
        look_.styles[BoldDay] = look_.styles[Day];
        look_.styles[BoldDay].font.bold = true;
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t /*index*/) override
    {
        std::ranges::sort(look_.cells, {}, &book::Cell::address);
        return look_;
    }

    /// A cell that is already there.
    book::Cell& At(std::int32_t row, std::int32_t column)
    {
        return *std::ranges::find(look_.cells, book::CellAddress{row, column},
                                  &book::Cell::address);
    }
    void Put(std::int32_t row, std::int32_t column, Style style, book::CellContent content = {})
    {
        look_.cells.push_back({{row, column}, style, -1, -1, std::move(content)});
    }
    /// Seven cells of a style, with texts if there are some.
    void PutWeek(std::int32_t row, std::int32_t column, Style style,
                 const std::vector<std::string>& texts = {})
    {
        for (std::size_t day = 0; day < 7; ++day) {
            const auto at = column + static_cast<std::int32_t>(day);
            Put(row, at, style,
                texts.empty() ? book::CellContent{} : book::CellContent{texts[day]});
        }
    }
    /// A month of six weeks, each of a row for days and, if wanted, one for texts.
    void PutMonth(std::int32_t row, std::int32_t column, bool hasTexts, Style days = Day)
    {
        for (std::int32_t week = 0; week < 6; ++week) {
            const std::int32_t at = row + week * (hasTexts ? 2 : 1);
            PutWeek(at, column, days);
            if (hasTexts)
                PutWeek(at + 1, column, Text);
        }
    }

private:
    book::WorkbookLook workbook_;
    book::SheetLook look_;
};

const std::vector<std::string> kWeek = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};

class ProposeTest : public testing::Test {
protected:
    ProposeTest()
    {
        names_.Weekdays.Store(0, {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"});
        names_.Months.Store(0, {"January", "February", "March", "April", "May", "June", "July",
                                "August", "September", "October", "November", "December"});
    }
    Proposal Run() { return Propose(workbook_, names_, {}, 46000); }

    model::NameTables names_;
    PaintedWorkbook workbook_;
};

std::string Ref(model::CellPosition cell)
{
    return model::FormatCellRef(cell);
}

TEST_F(ProposeTest, FindsAMonthWithItsTitles)
{
    workbook_.Put(2, 2, PaintedWorkbook::Title, std::string("May"));
    workbook_.Put(2, 8, PaintedWorkbook::Title, 2027.0);
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, kWeek);
    workbook_.PutMonth(5, 2, true);
    const Proposal proposal = Run();
    const model::MonthlyParameters& monthly = proposal.sets.Monthly;
    ASSERT_TRUE(monthly.Output);
    EXPECT_FALSE(proposal.sets.Yearly.Output);
    EXPECT_EQ(monthly.SheetName, "Page");
    EXPECT_EQ(Ref(monthly.FirstCellOfDay), "B5");
    EXPECT_EQ(monthly.ColIntervalOfDay, 1);
    EXPECT_EQ(monthly.RowIntervalOfDay, 2);
    EXPECT_EQ(monthly.FirstDayOfWeek, 1);
    EXPECT_EQ(Ref(monthly.FirstCellOfWeekday), "B4");
    EXPECT_EQ(Ref(monthly.FirstCellOfMonth), "B2");
    EXPECT_EQ(Ref(monthly.FirstCellOfYear), "H2");
    EXPECT_EQ(Ref(monthly.FirstCellOfHoliday), "B6");
    EXPECT_TRUE(proposal.unknown.empty());
    EXPECT_FALSE(proposal.reasons.empty());
}

TEST_F(ProposeTest, CallsUnknownWhatTheSheetDoesNotTell)
{
    workbook_.Put(2, 2, PaintedWorkbook::Title);
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header);
    workbook_.PutMonth(5, 2, true);
    const Proposal proposal = Run();
    ASSERT_TRUE(proposal.sets.Monthly.Output);
    EXPECT_EQ(proposal.unknown,
              (std::set<std::string>{"monthly.FirstDayOfWeek", "monthly.MonthName",
                                     "monthly.WeekdayName"}));
}

TEST_F(ProposeTest, FindsTwelveMonths)
{
    workbook_.Put(1, 1, PaintedWorkbook::Title, 2027.0);
    for (std::int32_t month = 0; month < 12; ++month) {
        const std::int32_t row = 3 + month / 3 * 9;
        const std::int32_t column = 1 + month % 3 * 8;
        workbook_.Put(row, column, PaintedWorkbook::Header,
                      names_.Months.Name(0, static_cast<std::int16_t>(month)));
        workbook_.PutWeek(row + 1, column, PaintedWorkbook::Header, kWeek);
        workbook_.PutMonth(row + 2, column, false);
    }
    const Proposal proposal = Run();
    const model::YearlyParameters& yearly = proposal.sets.Yearly;
    ASSERT_TRUE(yearly.Output);
    EXPECT_FALSE(proposal.sets.Monthly.Output);
    EXPECT_EQ(Ref(yearly.FirstCellOfDay), "A5");
    EXPECT_EQ(yearly.MonthLayout, 3);
    EXPECT_EQ(yearly.ColIntervalOfMonth, 8);
    EXPECT_EQ(yearly.RowIntervalOfMonth, 9);
    EXPECT_EQ(Ref(yearly.FirstCellOfMonth), "A3");
    EXPECT_EQ(Ref(yearly.FirstCellOfYear), "A1");
    EXPECT_FALSE(yearly.OutHoliday);
}

TEST_F(ProposeTest, FindsDaysInCellsThatOnlyHaveLines)
{
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, kWeek);
    workbook_.PutMonth(6, 2, true, PaintedWorkbook::Lined);
    const Proposal proposal = Run();
    ASSERT_TRUE(proposal.sets.Monthly.Output);
    EXPECT_EQ(Ref(proposal.sets.Monthly.FirstCellOfDay), "B6");
    EXPECT_EQ(Ref(proposal.sets.Monthly.FirstCellOfHoliday), "B7");
}

TEST_F(ProposeTest, FindsDaysOfWhichOneIsMarked)
{
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, kWeek);
    workbook_.PutMonth(5, 2, true);
    workbook_.At(9, 5).style = PaintedWorkbook::BoldDay;
    const Proposal proposal = Run();
    ASSERT_TRUE(proposal.sets.Monthly.Output);
    EXPECT_EQ(Ref(proposal.sets.Monthly.FirstCellOfDay), "B5");
}

TEST_F(ProposeTest, ReadsBeginningsOfWeekdays)
{
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, {"S", "M", "T", "W", "T", "F", "S"});
    workbook_.PutMonth(5, 2, true);
    const Proposal proposal = Run();
    ASSERT_TRUE(proposal.sets.Monthly.Output);
    EXPECT_EQ(proposal.sets.Monthly.FirstDayOfWeek, 0);
    EXPECT_FALSE(proposal.unknown.contains("monthly.FirstDayOfWeek"));
    EXPECT_TRUE(proposal.unknown.contains("monthly.WeekdayName"));
}

TEST_F(ProposeTest, DoesNotTakeTheHeadingOfAListForAYear)
{
    workbook_.Put(2, 2, PaintedWorkbook::Title, std::string("May"));
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, kWeek);
    workbook_.PutMonth(5, 2, true);
    workbook_.Put(5, 10, PaintedWorkbook::Header, std::string("Year"));
    workbook_.Put(6, 10, PaintedWorkbook::Header, std::string("Spring"));
    workbook_.Put(7, 10, PaintedWorkbook::Header, std::string("Autumn"));
    EXPECT_FALSE(Run().sets.Monthly.OutYear);
}

TEST_F(ProposeTest, TakesTheLargeMonthBesideASmallOne)
{
    workbook_.PutWeek(1, 1, PaintedWorkbook::Header, kWeek);
    for (std::int32_t i = 0; i < 42; ++i) {
        workbook_.Put(2 + i / 7, 1 + i % 7, PaintedWorkbook::Text,
                      i < 30 ? book::CellContent{1.0 + i} : book::CellContent{});
    }
    for (std::int32_t week = 0; week < 6; ++week) {
        for (std::int32_t line = 0; line < 6; ++line) {
            workbook_.PutWeek(12 + week * 6 + line, 10,
                              line == 0 ? PaintedWorkbook::Day : PaintedWorkbook::Text);
        }
    }
    workbook_.PutWeek(11, 10, PaintedWorkbook::Header, kWeek);
    const Proposal proposal = Run();
    ASSERT_TRUE(proposal.sets.Monthly.Output);
    EXPECT_EQ(Ref(proposal.sets.Monthly.FirstCellOfDay), "J12");
    EXPECT_EQ(proposal.sets.Monthly.RowIntervalOfDay, 6);
}

/// Twelve months below and beside each other without a distance, under captions at their left.
class YearWithoutDistancesTest : public ProposeTest {
protected:
    void Put(const std::vector<std::string>& captions)
    {
        workbook_.Put(1, 1, PaintedWorkbook::Title, 2027.0);
        for (std::int32_t month = 0; month < 12; ++month) {
            const std::int32_t row = 3 + month / 3 * 6;
            const std::int32_t column = 1 + month % 3 * 8;
            workbook_.Put(row, column, PaintedWorkbook::Header,
                          captions[static_cast<std::size_t>(month)]);
            workbook_.PutMonth(row, column + 1, false);
        }
    }
};

TEST_F(YearWithoutDistancesTest, IsFound)
{
    Put({"Tammi", "Helmi", "Maalis", "Huhti", "Touko", "Kesä", "Heinä", "Elo", "Syys", "Loka",
         "Marras", "Joulu"});
    const Proposal proposal = Run();
    const model::YearlyParameters& yearly = proposal.sets.Yearly;
    ASSERT_TRUE(yearly.Output);
    EXPECT_EQ(yearly.RowIntervalOfMonth, 6);
    EXPECT_EQ(Ref(yearly.FirstCellOfDay), "B3");
    EXPECT_EQ(Ref(yearly.FirstCellOfMonth), "A3");
    EXPECT_TRUE(proposal.unknown.contains("yearly.MonthName"));
}

TEST_F(YearWithoutDistancesTest, IsNoYearWithOtherNumbers)
{
    Put(std::vector<std::string>(12, "Sales"));
    for (std::int32_t row = 9; row < 15; ++row)
        workbook_.At(row, 11).content = 250.0 * row;
    const Proposal proposal = Run();
    EXPECT_FALSE(proposal.sets.Yearly.Output);
    EXPECT_FALSE(proposal.sets.Monthly.Output);
}

TEST_F(ProposeTest, ProposesNothingForATableWithHeadings)
{
    workbook_.PutWeek(4, 2, PaintedWorkbook::Header, kWeek);
    workbook_.PutMonth(5, 2, false);
    for (std::int32_t row = 5; row < 11; ++row)
        workbook_.Put(row, 1, PaintedWorkbook::Header, std::string("Lunch"));
    const Proposal proposal = Run();
    EXPECT_FALSE(proposal.sets.Monthly.Output);
    EXPECT_FALSE(proposal.sets.Yearly.Output);
    EXPECT_TRUE(proposal.reasons.empty());
}

TEST_F(ProposeTest, ProposesNothingForANumberChart)
{
    workbook_.PutWeek(1, 1, PaintedWorkbook::Header, kWeek);
    for (std::int32_t i = 0; i < 42; ++i)
        workbook_.Put(2 + i / 7, 1 + i % 7, PaintedWorkbook::Day, 3.0 * i);
    EXPECT_FALSE(Run().sets.Monthly.Output);
}

TEST_F(ProposeTest, AnEmptySheetIsNoCalendar)
{
    const Proposal proposal = Run();
    EXPECT_FALSE(proposal.sets.Monthly.Output);
    EXPECT_TRUE(proposal.unknown.empty());
}

} // namespace
} // namespace orrery::look
