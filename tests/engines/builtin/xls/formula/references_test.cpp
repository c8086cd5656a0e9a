#include "engines/builtin/xls/formula/references.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

/// Three sheets; links 0 to 3: each sheet, and the first two together.
std::string StreamWith(const std::string& names)
{
    return BofOf(5) + BoundSheetOf("A", 1) + BoundSheetOf("B", 2) + BoundSheetOf("C", 3) +
           OwnBookOf(3) + ExternSheetOf({0, 0, 0, 0, 1, 1, 0, 2, 2, 0, 0, 1}) + names + EofRecord();
}

/// A, two copies of B in front of it, B, C.
const std::vector<SavedSheet> kSheets = {
    {"A", 0, false}, {"B1", 1, true}, {"B2", 1, true}, {"B", 1, false}, {"C", 2, false}};

TEST(ReferencesTest, SheetsMoveAndCopiesAreAdded)
{
    const auto stream = StreamWith({});
    const Globals globals(stream);
    const References references(globals, kSheets);
    EXPECT_EQ(references.ExternSheet(),
              ExternSheetOf({0, 0, 0, 0, 3, 3, 0, 4, 4, 0, 0, 3, 0, 1, 1, 0, 2, 2}));
    EXPECT_TRUE(references.ChangeAt(1));
    EXPECT_FALSE(references.ChangeAt(3)) << "the model itself";
}

TEST(ReferencesTest, ACopyThatRefersToItsModelRefersToItself)
{
    const auto stream = StreamWith({});
    const Globals globals(stream);
    const References references(globals, kSheets);
    const auto first = references.MapFor(1);
    EXPECT_EQ(first.sheet(1), 4);
    EXPECT_EQ(references.MapFor(2).sheet(1), 5);
    EXPECT_EQ(first.sheet(0), 0);
    EXPECT_EQ(first.sheet(2), 2);
    EXPECT_EQ(first.sheet(3), 3) << "a range of sheets goes on naming the model";
    EXPECT_EQ(first.sheet(99), 99);
}

TEST(ReferencesTest, NamesOfTheModelAreRepeatedForItsCopies)
{
    const auto stream = StreamWith(NameOf("Own", 2, CellOn(1)) + NameOf("Other", 1, CellOn(0)));
    const Globals globals(stream);
    const References references(globals, kSheets);
    EXPECT_EQ(references.AddedNames(), NameOf("Own", 2, CellOn(4)) + NameOf("Own", 3, CellOn(5)));
    EXPECT_EQ(references.ScopeOf(globals.Names()[0]), 4) << "the model stands later now";
    EXPECT_EQ(references.MapFor(1).name(1), 3U);
    EXPECT_EQ(references.MapFor(2).name(1), 4U);
    EXPECT_EQ(references.MapFor(1).name(2), 2U);
    EXPECT_EQ(references.MapFor(1).name(0), 0U);
}

TEST(ReferencesTest, NamesOfTheWorkbookThatReferToTheModelAreRepeated)
{
    const auto stream =
        StreamWith(NameOf("Far", 0, CellOn(0)) + NameOf("Near", 0, CellOn(1)) +
                   NameOf("Both", 0, CellOn(3)) + NameOf("Macro", 0, CellOn(1), 0x08));
    const Globals globals(stream);
    const References references(globals, kSheets);
    EXPECT_EQ(references.AddedNames(), NameOf("Near", 2, CellOn(4)) + NameOf("Near", 3, CellOn(5)));
    EXPECT_EQ(references.MapFor(2).name(2), 6U);
}

TEST(ReferencesTest, NamesThatTheModelHasItselfAreNotRepeated)
{
    const auto stream = StreamWith(NameOf("Near", 0, CellOn(1)) + NameOf("NEAR", 2, CellOn(0)));
    const Globals globals(stream);
    const References references(globals, kSheets);
    EXPECT_EQ(references.AddedNames(), NameOf("NEAR", 2, CellOn(0)) + NameOf("NEAR", 3, CellOn(0)));
    EXPECT_EQ(references.MapFor(1).name(1), 1U);
    EXPECT_EQ(references.MapFor(1).name(2), 3U);
}

TEST(ReferencesTest, RepeatedNamesReferToRepeatedNames)
{
    const std::string toFirst = '\x23' + Numbers({1, 0}); // PtgName of the first name
    const auto stream = StreamWith(NameOf("Base", 2, CellOn(1)) + NameOf("Above", 2, toFirst));
    const Globals globals(stream);
    const std::vector<SavedSheet> sheets = {
        {"A", 0, false}, {"B", 1, false}, {"B1", 1, true}, {"C", 2, false}};
    const References references(globals, sheets);
    EXPECT_EQ(references.AddedNames(),
              NameOf("Base", 3, CellOn(4)) + NameOf("Above", 3, '\x23' + Numbers({3, 0})));
}

TEST(ReferencesTest, NamesReachedThroughASheetFollowIt)
{
    const auto stream = StreamWith(NameOf("Own", 2, CellOn(1)));
    const Globals globals(stream);
    const References references(globals, kSheets);
    const auto map = references.MapFor(1);
    EXPECT_EQ(map.externName(1, 1), 2U) << "B!Own is now B1!Own";
    EXPECT_EQ(map.externName(0, 1), 1U);
}

TEST(ReferencesTest, AWorkbookWithoutReferencesGetsNone)
{
    const auto stream = BofOf(5) + BoundSheetOf("A", 1) +
                        NameOf("Own", 1, "\x1E\x01" + std::string(1, '\0')) + EofRecord();
    const Globals globals(stream);
    const std::vector<SavedSheet> sheets = {{"A", 0, false}, {"A (2)", 0, true}};
    const References references(globals, sheets);
    EXPECT_EQ(references.ExternSheet(), "");
    EXPECT_EQ(references.AddedNames(), NameOf("Own", 2, "\x1E\x01" + std::string(1, '\0')));
}

} // namespace
} // namespace orrery::xls
