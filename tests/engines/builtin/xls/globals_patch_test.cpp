#include "engines/builtin/xls/globals_patch.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

std::string WindowOf(std::uint16_t active, std::uint16_t first, std::uint16_t selected)
{
    return RecordOf(RecordType::Window1, Numbers({0, 0, 0, 0, 0, active, first, selected, 600}));
}

std::string TabIdsOf(const std::vector<std::uint16_t>& ids)
{
    return RecordOf(RecordType::TabIds, Numbers(ids));
}

/// One, a copy of Two in front of it, Two.
const std::vector<SavedSheet> kOneCopied = {
    {"One", 0, false}, {"Copy", 1, true}, {"Two", 1, false}};

std::string Patched(const std::string& stream, const std::vector<SavedSheet>& sheets,
                    bool recalculate = false)
{
    const Globals globals(stream);
    const References references(globals, sheets);
    const auto ids = TabIds(globals, sheets);
    const SheetNameLookup names = [](std::string_view) { return std::nullopt; };
    SavedGlobals saved{sheets, references, ids, names};
    saved.selectsOneSheet = sheets.size() > globals.Sheets().size();
    saved.recalculate = recalculate;
    return PatchGlobals(globals, saved);
}

std::string Stream(const std::string& rest)
{
    return BofOf(5) + WindowOf(1, 0, 2) + BoundSheetOf("One", 11) + BoundSheetOf("Two", 22) + rest +
           EofRecord();
}

TEST(GlobalsPatchTest, NothingChangesWithoutAChange)
{
    const auto stream = Stream(OwnBookOf(2) + ExternSheetOf({0, 0, 1, 0, 0xFFFE, 0xFFFE}) +
                               NameOf("Own", 2, CellOn(0)));
    EXPECT_EQ(Patched(stream, {{"One", 0, false}, {"Two", 1, false}}), stream);
}

TEST(GlobalsPatchTest, SheetsAreListedInTheirOrderWithTheirNames)
{
    const auto patched =
        Patched(Stream({}), {{"Eins", 0, false}, {"Zwei", 1, true}, {"Two", 1, false}});
    EXPECT_EQ(patched, BofOf(5) + WindowOf(2, 0, 1) + BoundSheetOf("Eins", 11) +
                           BoundSheetOf("Zwei", 22) + BoundSheetOf("Two", 22) + EofRecord());
}

TEST(GlobalsPatchTest, TheWindowShowsTheSameSheetsAndOneIsSelected)
{
    EXPECT_TRUE(Patched(Stream({}), kOneCopied).starts_with(BofOf(5) + WindowOf(2, 0, 1)));
}

TEST(GlobalsPatchTest, CopiesHaveIdsOfTheirOwn)
{
    const auto patched = Patched(Stream(TabIdsOf({7, 3})), kOneCopied);
    EXPECT_NE(patched.find(TabIdsOf({7, 8, 3})), patched.npos);
    const auto stream = Stream({});
    EXPECT_EQ(TabIds(Globals(stream), kOneCopied), (std::vector<std::uint16_t>{1, 3, 2}));
}

TEST(GlobalsPatchTest, TheBookCountsItsSheets)
{
    const auto patched = Patched(Stream(OwnBookOf(2) + ExternSheetOf({0, 1, 1})), kOneCopied);
    EXPECT_NE(patched.find(OwnBookOf(3) + ExternSheetOf({0, 2, 2, 0, 1, 1})), patched.npos);
}

TEST(GlobalsPatchTest, NamesMoveWithTheirSheetsAndNewOnesComeLast)
{
    const auto patched = Patched(Stream(OwnBookOf(2) + ExternSheetOf({0, 1, 1}) +
                                        NameOf("Own", 2, CellOn(0)) + NameOf("Of", 0, {})),
                                 kOneCopied);
    EXPECT_NE(patched.find(NameOf("Own", 3, CellOn(0)) + NameOf("Of", 0, {}) +
                           NameOf("Own", 2, CellOn(1)) + EofRecord()),
              patched.npos);
}

TEST(GlobalsPatchTest, RecalculationClearsTheBuild)
{
    const auto build = [](std::uint16_t low) {
        return RecordOf(RecordType::RecalcId, Numbers({0x1C1, 0, low, 0}));
    };
    EXPECT_EQ(Patched(Stream(build(9)), {{"One", 0, false}, {"Two", 1, false}}, true),
              Stream(build(0)));
    EXPECT_EQ(Patched(Stream(build(9)), {{"One", 0, false}, {"Two", 1, false}}), Stream(build(9)));
}

TEST(GlobalsPatchTest, ANewTableOfStringsGoesAfterTheNames)
{
    const auto stream =
        Stream(OwnBookOf(2) + ExternSheetOf({0, 1, 1}) + NameOf("Own", 2, CellOn(0)) +
               RecordOf(static_cast<RecordType>(0x0863), "book"));
    const Globals globals(stream);
    const References references(globals, kOneCopied);
    const auto ids = TabIds(globals, kOneCopied);
    const SheetNameLookup names = [](std::string_view) { return std::nullopt; };
    SharedStrings strings({});
    strings.IndexOf("new");
    SavedGlobals saved{kOneCopied, references, ids, names};
    saved.strings = &strings;
    saved.stringReferences = 5;
    const auto patched = PatchGlobals(globals, saved);
    const auto at =
        patched.find(RecordOf(RecordType::Sst, Numbers({5, 0, 1, 0, 3}) + '\0' + "new"));
    ASSERT_NE(at, patched.npos);
    EXPECT_TRUE(patched.substr(0, at).ends_with(NameOf("Own", 2, CellOn(1))));
    // EXTSST: at least eight strings in a bucket; the first one's offset in the stream, in the
    // record
    const auto index = patched.find(
        RecordOf(RecordType::ExtSst,
                 Numbers({8}) + Numbers({static_cast<std::uint16_t>(at + 12), 0, 12, 0})));
    EXPECT_NE(index, patched.npos);
}

TEST(GlobalsPatchTest, FindsTheOffsetsOfTheSavedSheets)
{
    const auto patched = Patched(Stream({}), kOneCopied);
    std::vector<std::uint32_t> offsets;
    for (const auto place : OffsetPlaces(patched))
        offsets.push_back(ReadU32(patched, place));
    EXPECT_EQ(offsets, (std::vector<std::uint32_t>{11, 22, 22}));
}

} // namespace
} // namespace orrery::xls
