#include "engines/builtin/edit/recalculation.h"

#include <gtest/gtest.h>

namespace orrery::edit {
namespace {

using Changed = std::vector<bool>;

/// Each sheet reads the previous one; the first reads none.
SheetReads PreviousSheet(std::size_t sheet)
{
    return sheet > 0 ? SheetReads{false, {sheet - 1}} : SheetReads{};
}

TEST(PropagateChangesTest, ReachesSheetsThatReadThroughOthers)
{
    EXPECT_EQ(PropagateChanges({false, true, false, false}, PreviousSheet),
              (Changed{false, true, true, true}));
}

TEST(PropagateChangesTest, ReachesSheetsBeforeTheOnesThatTheyRead)
{
    const auto theOneBehind = [](std::size_t sheet) {
        return sheet < 3 ? SheetReads{false, {sheet + 1}} : SheetReads{};
    };
    EXPECT_EQ(PropagateChanges({false, false, false, true}, theOneBehind),
              (Changed{true, true, true, true}));
}

TEST(PropagateChangesTest, EndsIfSheetsReadEachOther)
{
    const auto inACircle = [](std::size_t sheet) { return SheetReads{false, {(sheet + 1) % 3}}; };
    EXPECT_EQ(PropagateChanges({false, true, false}, inACircle), (Changed{true, true, true}));
}

TEST(PropagateChangesTest, ReachesSheetsThatReadEverythingAndTheirReaders)
{
    const auto lastReadsEverything = [](std::size_t sheet) {
        return sheet == 3   ? SheetReads{true, {}}
               : sheet == 2 ? SheetReads{false, {3}}
                            : SheetReads{};
    };
    EXPECT_EQ(PropagateChanges({true, false, false, false}, lastReadsEverything),
              (Changed{true, false, true, true}));
}

TEST(PropagateChangesTest, AsksEverySheetOnceHoweverLongTheChain)
{
    constexpr std::size_t kSheets = 1200;
    Changed written(kSheets);
    written.back() = true;
    std::size_t asked = 0;
    const auto changed = PropagateChanges(written, [&](std::size_t sheet) {
        ++asked;
        return SheetReads{false, {sheet + 1}};
    });
    EXPECT_EQ(changed, Changed(kSheets, true));
    EXPECT_EQ(asked, kSheets - 1);
}

TEST(PropagateChangesTest, AsksNothingIfNothingWasWritten)
{
    const auto never = [](std::size_t) {
        ADD_FAILURE();
        return SheetReads{true, {}};
    };
    EXPECT_EQ(PropagateChanges({false, false}, never), (Changed{false, false}));
}

} // namespace
} // namespace orrery::edit
