#include "book/error.h"
#include "engines/builtin/xls/records/globals.h"
#include "util/error.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

const std::string kBof = BofOf(5);
const std::string kOneSheet = BoundSheetOf("Plan", 500);

std::optional<util::AnyErrorKind> KindOfErrorIn(const std::string& stream)
{
    try {
        const Globals globals(stream);
    }
    catch (const util::Error& error) {
        return error.Kind();
    }
    return std::nullopt;
}

TEST(GlobalsTest, ListsTheSheetsWithTheirOffsets)
{
    const auto stream = kBof + BoundSheetOf("Plan", 500) + BoundSheetOf("\xE6\x97\xA5", 600, 2) +
                        EofRecord() + "more";
    const Globals globals(stream);
    ASSERT_EQ(globals.Sheets().size(), 2U);
    EXPECT_EQ(globals.Sheets()[0].Name, "Plan");
    EXPECT_EQ(globals.Sheets()[0].Offset, 500U);
    EXPECT_EQ(globals.Sheets()[1].Name, "\xE6\x97\xA5");
    EXPECT_EQ(globals.Sheets()[1].Type, 2);
    EXPECT_EQ(globals.Sheets()[1].place.In(stream), BoundSheetOf("\xE6\x97\xA5", 600, 2));
    EXPECT_EQ(globals.End(), stream.size() - 4);
}

TEST(GlobalsTest, ReadsNamesByScopeAndFoldsThem)
{
    const auto stream = kBof + kOneSheet + NameOf("Total", 0, CellOn(0)) +
                        NameOf("\x06", 1, CellOn(0), 0x20) + NameOf("Run", 0, {}, 0x0A) +
                        EofRecord();
    const Globals globals(stream);
    ASSERT_EQ(globals.Names().size(), 3U);
    EXPECT_EQ(globals.Names()[0].Key, "total");
    EXPECT_EQ(globals.Names()[0].Sheet, 0);
    EXPECT_FALSE(globals.Names()[0].IsMacro);
    EXPECT_EQ(globals.Names()[1].Key, "\x01\x06") << "built-in names are apart";
    EXPECT_EQ(globals.Names()[1].Sheet, 1);
    EXPECT_TRUE(globals.Names()[2].IsMacro);
    EXPECT_EQ(globals.NamesEnd(), globals.Names()[2].place.end);
}

TEST(GlobalsTest, ANameContinuesInContinueRecords)
{
    const auto stream = kBof + kOneSheet + NameOf("Long", 0, "abc") +
                        RecordOf(RecordType::Continue, "def") +
                        RecordOf(static_cast<RecordType>(0x0894), "comment") + EofRecord();
    const Globals globals(stream);
    ASSERT_EQ(globals.Names().size(), 1U);
    EXPECT_EQ(globals.Names()[0].place.In(stream),
              NameOf("Long", 0, "abc") + RecordOf(RecordType::Continue, "def"));
    EXPECT_EQ(globals.NamesEnd(), stream.size() - 4) << "behind the name's comment";
}

TEST(GlobalsTest, DistinguishesOwnSheetsFromThoseOfOtherBooks)
{
    const auto stream = kBof + kOneSheet + BoundSheetOf("Two", 600) +
                        RecordOf(RecordType::SupBook, Numbers({1, 3, 0, 0x61})) + OwnBookOf(2) +
                        ExternSheetOf({1, 0, 0, 1, 0, 1, 0, 0, 0, 1, 0xFFFF, 0xFFFF, 1, 7, 7}) +
                        EofRecord();
    const Globals globals(stream);
    ASSERT_EQ(globals.OwnBook(), 1U);
    ASSERT_EQ(globals.Links().size(), 5U);
    ASSERT_TRUE(globals.OwnSheets(std::uint16_t{0}));
    EXPECT_TRUE(globals.OwnSheets(std::uint16_t{0})->IsOnly(0));
    EXPECT_FALSE(globals.OwnSheets(std::uint16_t{1})->IsOnly(0)) << "a range of sheets";
    EXPECT_FALSE(globals.OwnSheets(std::uint16_t{2})) << "another workbook";
    EXPECT_FALSE(globals.OwnSheets(std::uint16_t{3})) << "a deleted sheet";
    EXPECT_FALSE(globals.OwnSheets(std::uint16_t{4})) << "no such sheet";
    EXPECT_FALSE(globals.OwnSheets(std::uint16_t{9})) << "no such entry";
}

TEST(GlobalsTest, FindsTheTableOfStringsWithItsContinuationAndItsIndex)
{
    const auto sst = RecordOf(RecordType::Sst, "12345678") + RecordOf(RecordType::Continue, "9");
    const auto stream = kBof + kOneSheet + sst + RecordOf(RecordType::ExtSst, "1234") + EofRecord();
    const Globals globals(stream);
    EXPECT_EQ(globals.StringsOnly().In(stream), sst);
    EXPECT_EQ(globals.StringsPlace().In(stream), sst + RecordOf(RecordType::ExtSst, "1234"));
}

TEST(GlobalsTest, FindsTheDrawingGroupOfSeveralRecords)
{
    const auto group = RecordOf(RecordType::MsoDrawingGroup, "ab") +
                       RecordOf(RecordType::MsoDrawingGroup, "cd") +
                       RecordOf(RecordType::Continue, "ef");
    const auto stream = kBof + kOneSheet + group + EofRecord();
    EXPECT_EQ(Globals(stream).DrawingGroupPlace().In(stream), group);
}

TEST(GlobalsTest, RefusesOtherStreamsAndVersions)
{
    using enum book::ErrorKind;
    EXPECT_EQ(KindOfErrorIn(BofOf(5, 0x0500) + kOneSheet + EofRecord()), OldBinaryFormat);
    EXPECT_EQ(KindOfErrorIn(RecordOf(static_cast<RecordType>(0x0009), "1234")), OldBinaryFormat);
    EXPECT_EQ(KindOfErrorIn(RecordOf(static_cast<RecordType>(0x0409), "123456")), OldBinaryFormat);
    EXPECT_EQ(KindOfErrorIn(BofOf(0x10) + kOneSheet + EofRecord()), DamagedWorkbook);
    EXPECT_EQ(KindOfErrorIn(kBof + EofRecord()), DamagedWorkbook) << "no sheets";
    EXPECT_EQ(KindOfErrorIn(kBof + kOneSheet), DamagedWorkbook) << "no end";
    EXPECT_EQ(KindOfErrorIn(""), DamagedWorkbook);
    EXPECT_EQ(KindOfErrorIn(kOneSheet + EofRecord()), DamagedWorkbook) << "no beginning";
}

TEST(GlobalsTest, AMissingActiveSheetIsTheFirst)
{
    const auto window = [](std::uint16_t active) {
        return RecordOf(RecordType::Window1, Numbers({0, 0, 0, 0, 0, active, 0, 1, 600}));
    };
    const auto two = kBof + kOneSheet + BoundSheetOf("Two", 600);
    EXPECT_EQ(Globals(two + window(1) + EofRecord()).ActiveSheet(), 1U);
    EXPECT_EQ(Globals(two + window(2) + EofRecord()).ActiveSheet(), 0U);
    EXPECT_EQ(Globals(two + window(1) + window(0) + EofRecord()).ActiveSheet(), 1U)
        << "the first window counts";
}

TEST(GlobalsTest, KnowsWhetherTheStructureIsProtected)
{
    const auto stream = [](std::uint16_t on) {
        return kBof + kOneSheet + RecordOf(RecordType::Protect, Numbers({on})) + EofRecord();
    };
    EXPECT_TRUE(Globals(stream(1)).IsStructureProtected());
    EXPECT_FALSE(Globals(stream(0)).IsStructureProtected());
}

} // namespace
} // namespace orrery::xls
