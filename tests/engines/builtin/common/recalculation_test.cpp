#include "engines/builtin/common/recalculation.h"

#include <gtest/gtest.h>

namespace orrery::builtin {
namespace {

using Changed = std::vector<bool>;

/// Each sheet reads the one before it, the first reads none.
bool ReadsTheOneBefore(std::size_t sheet, const Changed& changed)
{
    return sheet > 0 && changed[sheet - 1];
}

TEST(SpreadChangesTest, ReachesSheetsThatReadThroughOthers)
{
    EXPECT_EQ(SpreadChanges({false, true, false, false}, ReadsTheOneBefore),
              (Changed{false, true, true, true}));
}

TEST(SpreadChangesTest, ReachesSheetsInFrontOfWhatTheyRead)
{
    const auto readsTheOneBehind = [](std::size_t sheet, const Changed& changed) {
        return sheet + 1 < changed.size() && changed[sheet + 1];
    };
    EXPECT_EQ(SpreadChanges({false, false, false, true}, readsTheOneBehind),
              (Changed{true, true, true, true}));
}

TEST(SpreadChangesTest, AsksNobodyWhereNothingWasWritten)
{
    const auto never = [](std::size_t, const Changed&) {
        ADD_FAILURE();
        return true;
    };
    EXPECT_EQ(SpreadChanges({false, false}, never), (Changed{false, false}));
}

} // namespace
} // namespace orrery::builtin
