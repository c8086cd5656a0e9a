#include "generate/block_cells.h"

#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::generate {
namespace {

using model::CellPosition;

TEST(BlockCellsTest, DaysStandBelowTheirWeekdays)
{
    EXPECT_EQ(PlaceInGrid(1, 7, false), (GridPosition{0, 6})); // a Saturday
    EXPECT_EQ(PlaceInGrid(2, 7, false), (GridPosition{1, 0}));
    EXPECT_EQ(PlaceInGrid(31, 7, false), (GridPosition{5, 1}));
    EXPECT_EQ(PlaceInGrid(1, 1, true), (GridPosition{0, 6})); // a Sunday ends the week
    EXPECT_EQ(PlaceInGrid(2, 1, true), (GridPosition{1, 0}));
    EXPECT_EQ(PlaceInGrid(31, 1, true), (GridPosition{5, 1}));
    EXPECT_EQ(PlaceInGrid(28, 2, true), (GridPosition{3, 6})); // four whole weeks
}

TEST(BlockCellsTest, PlacesAreIntervalsApart)
{
    model::CalendarParameters parameters;
    parameters.ColIntervalOfDay = 3;
    parameters.RowIntervalOfDay = 5;
    EXPECT_EQ(CellInGrid({6, 2}, {0, 0}, parameters), (CellPosition{6, 2}));
    EXPECT_EQ(CellInGrid({6, 2}, {5, 6}, parameters), (CellPosition{31, 20}));
}

TEST(BlockCellsTest, BlocksStandSideBySide)
{
    model::YearlyParameters parameters;
    parameters.FirstCellOfDay = {5, 2};
    parameters.FirstCellOfMonth = {3, 4};
    parameters.FirstCellOfYear = {1, 1};
    parameters.MonthLayout = 3;
    parameters.ColIntervalOfMonth = 8;
    parameters.RowIntervalOfMonth = 9;
    const BlockOrigins origins = OriginsOf(parameters);
    ShiftToBlock(origins, 12, parameters);
    EXPECT_EQ(parameters.FirstCellOfDay, (CellPosition{32, 18}));
    EXPECT_EQ(parameters.FirstCellOfMonth, (CellPosition{30, 20}));
    EXPECT_EQ(parameters.FirstCellOfYear, (CellPosition{1, 1}));
    RestoreOrigins(origins, parameters);
    EXPECT_EQ(parameters.FirstCellOfDay, (CellPosition{5, 2}));
    parameters.MonthLayout = 0;
    EXPECT_THROW(ShiftToBlock(origins, 1, parameters), util::OutOfRangeError);
}

} // namespace
} // namespace orrery::generate
