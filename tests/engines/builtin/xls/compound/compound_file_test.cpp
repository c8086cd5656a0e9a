#include "engines/builtin/xls/compound/compound_file.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"
#include "xls/built_compound.h"
#include "xls/compound_snapshot.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using test::BuildCompound;
using test::Layout;
using test::Node;
using test::Noise;
using test::Storage;
using test::Stream;

constexpr std::array<std::size_t, 12> kSizes = {0,    1,    63,   64,   65,    511,
                                                4095, 4096, 4097, 8192, 10000, 300000};

std::u16string Name(std::size_t number)
{
    std::u16string name = u"S";
    for (const char digit : std::to_string(number))
        name += static_cast<char16_t>(digit);
    return name;
}

class CompoundFileTest : public testing::TestWithParam<Layout> {};

TEST_P(CompoundFileTest, ReadsStreamsOfAllSizes)
{
    std::vector<Node> streams;
    for (const std::size_t size : kSizes)
        streams.push_back(Stream(Name(size), Noise(size, static_cast<unsigned>(size))));
    const CompoundFile file(BuildCompound(streams, GetParam()));
    EXPECT_EQ(file.SectorSize(), GetParam().sectorSize);
    for (const std::size_t size : kSizes) {
        const auto id = file.Find("S" + std::to_string(size));
        ASSERT_TRUE(id) << size;
        EXPECT_EQ(file.Entry(*id).size, size);
        EXPECT_TRUE(file.ReadStream(*id) == Noise(size, static_cast<unsigned>(size))) << size;
    }
}

TEST_P(CompoundFileTest, ReadsStoragesInStorages)
{
    Node inner = Storage(u"VBA", {Stream(u"dir", "d"), Stream(u"Module1", Noise(5000, 1))});
    inner.classId = "0123456789abcdef";
    inner.modified = 0x0123456789ABCDEF;
    Node outer = Storage(u"_VBA_PROJECT_CUR", {inner, Stream(u"PROJECT", "p")});
    outer.stateBits = 77;
    const CompoundFile file(
        BuildCompound({Stream(u"Workbook", Noise(9000, 2)), outer}, GetParam()));
    const auto snapshot = test::SnapshotOf(file);
    EXPECT_EQ(snapshot.size(), 7U);
    EXPECT_EQ(snapshot.at(u"/_VBA_PROJECT_CUR").stateBits, 77U);
    EXPECT_EQ(snapshot.at(u"/_VBA_PROJECT_CUR/VBA").classId, "0123456789abcdef");
    EXPECT_EQ(snapshot.at(u"/_VBA_PROJECT_CUR/VBA").modified, 0x0123456789ABCDEFU);
    EXPECT_EQ(snapshot.at(u"/_VBA_PROJECT_CUR/VBA/dir").bytes, "d");
    EXPECT_EQ(snapshot.at(u"/_VBA_PROJECT_CUR/VBA/Module1").bytes, Noise(5000, 1));
    EXPECT_EQ(file.MembersOf(*file.Find("_VBA_PROJECT_CUR")).size(), 2U);
}

INSTANTIATE_TEST_SUITE_P(Layouts, CompoundFileTest,
                         testing::Values(Layout{512}, Layout{4096}, Layout{512, 1}, Layout{4096, 1},
                                         Layout{512, 2, test::TreeShape::Reversed}),
                         [](const auto& test) {
                             return std::to_string(test.param.sectorSize) + "Order" +
                                    std::to_string(test.param.seed);
                         });

TEST(CompoundFileFindTest, IgnoresCase)
{
    const CompoundFile file(BuildCompound({Stream(u"WORKBOOK", "w"), Storage(u"\u00C4", {})}));
    EXPECT_TRUE(file.Find("Workbook"));
    EXPECT_TRUE(file.Find("\u00E4"));
    EXPECT_FALSE(file.Find("Book"));
    EXPECT_FALSE(file.Find("Workbook", *file.Find("\u00E4")));
}

TEST(CompoundFileLargeTest, FollowsTheListOfFatSectors)
{
    // Beyond 109 * 128 * 512 bytes the header alone cannot list the FAT sectors.
    const std::string bytes = Noise(16'000'000, 1);
    for (const unsigned seed : {0U, 5U}) {
        const CompoundFile file(
            BuildCompound({Stream(u"Workbook", bytes), Stream(u"x", "small")}, {512, seed}));
        EXPECT_TRUE(file.ReadStream(*file.Find("Workbook")) == bytes);
        EXPECT_EQ(file.ReadStream(*file.Find("x")), "small");
    }
}

// A file with these sectors in order: two long streams of 9 and 8 sectors, the mini stream (from
// 17) with "ab" and "cd", the mini FAT (18), the directory (19, 20), the FAT (21).
constexpr std::size_t kFirstLong = 0;
constexpr std::size_t kSecondLong = 9;
constexpr std::size_t kMiniFat = 18;
constexpr std::size_t kDirectory = 19;
constexpr std::size_t kFat = 21;

std::size_t SectorAt(std::size_t sector)
{
    return 512 * (sector + 1);
}

std::size_t FatEntry(std::size_t sector)
{
    return SectorAt(kFat) + 4 * sector;
}

enum Entry { kRoot, kMini1, kMini2, kLong1, kLong2 };

std::size_t EntryField(Entry entry, std::size_t field)
{
    return SectorAt(kDirectory) + 128 * static_cast<std::size_t>(entry) + field;
}

constexpr std::size_t kChildField = 76;
constexpr std::size_t kStartField = 116;
constexpr std::size_t kSizeField = 120;

std::string Sound()
{
    return BuildCompound({Stream(u"a", "ab"), Stream(u"b", "cd"), Stream(u"c", Noise(4500, 1)),
                          Stream(u"d", Noise(4096, 2))});
}

struct Damage {
    const char* name;
    std::function<void(std::string&)> make;
    std::string cause;
};

class CompoundFileDamageTest : public testing::TestWithParam<Damage> {};

TEST_P(CompoundFileDamageTest, IsRefusedQuickly)
{
    std::string bytes = Sound();
    ASSERT_EQ(bytes.size(), SectorAt(kFat + 1));
    ASSERT_NO_THROW(CompoundFile{bytes});
    GetParam().make(bytes);
    const auto begin = std::chrono::steady_clock::now();
    try {
        const CompoundFile file(bytes);
        ADD_FAILURE() << "not refused";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Cause(), GetParam().cause);
        EXPECT_EQ(error.Subject(), "");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(200));
}

Damage Put(const char* name, std::size_t at, std::uint32_t value, const char* cause)
{
    return {name, [=](std::string& bytes) { PutU32(bytes, at, value); }, cause};
}

const char* const kCircle = "a chain of its sectors runs in a circle";
const char* const kOverlap = "two of its streams overlap";
const char* const kPastEnd = "a chain of its sectors leads past the end of the file";
const char* const kTooEarly = "one of its streams ends too early";
const char* const kNoEntryThere = "its directory names an entry that is not there";
const char* const kTooLong = "one of its streams is longer than the file";

INSTANTIATE_TEST_SUITE_P(
    Damages, CompoundFileDamageTest,
    testing::Values(
        Put("ChainToItself", FatEntry(kFirstLong + 3), kFirstLong + 3, kCircle),
        Put("ChainBack", FatEntry(kFirstLong + 5), kFirstLong, kCircle),
        Put("TwoStreamsShareSectors", FatEntry(kFirstLong + 3), kSecondLong + 2, kOverlap),
        Put("TwoStreamsStartAtOneSector", EntryField(kLong2, kStartField), kFirstLong, kOverlap),
        Put("StreamInTheDirectory", FatEntry(kFirstLong), kDirectory, kOverlap),
        Put("StreamInTheFat", FatEntry(kFirstLong), kFat, kOverlap),
        Put("DirectoryInTheFat", 48, kFat, kOverlap),
        Put("StreamPastTheEnd", FatEntry(kFirstLong + 1), 22, kPastEnd),
        Put("StreamFarPastTheEnd", EntryField(kLong1, kStartField), 0xFFFFFFF0, kPastEnd),
        Put("StreamEndsEarly", FatEntry(kFirstLong + 1), kEndOfChain, kTooEarly),
        Put("StreamRunsIntoFreeSectors", FatEntry(kFirstLong + 1), kFreeSector, kTooEarly),
        Put("StreamWithoutStart", EntryField(kLong1, kStartField), kEndOfChain, kTooEarly),
        Put("AbsurdSize", EntryField(kLong1, kSizeField), 0xFFFFFFFF, kTooLong),
        Put("MiniStreamsOverlap", EntryField(kMini2, kStartField), 0, kOverlap),
        Put("MiniStreamPastTheEnd", EntryField(kMini2, kStartField), 2, kPastEnd),
        Put("MiniChainTooShort", EntryField(kMini1, kSizeField), 100, kTooEarly),
        Damage{"MiniChainInACircle",
               [](std::string& bytes) {
                   PutU32(bytes, SectorAt(kMiniFat), 0);
                   PutU32(bytes, EntryField(kMini1, kSizeField), 100);
               },
               kCircle},
        Put("MiniStreamTooShort", EntryField(kRoot, kSizeField), 65, kTooEarly),
        Put("MiniStreamLost", EntryField(kRoot, kStartField), kEndOfChain, kTooLong),
        Put("FatPastTheEnd", 76, 22, kPastEnd), Put("NoFat", 76, kFreeSector, kNoEntryThere),
        Put("NoDirectory", 48, kEndOfChain, "its directory has no root"),
        Put("DirectoryPastTheEnd", 48, 1000, kPastEnd),
        Put("DirectoryInACircle", FatEntry(kDirectory + 1), kDirectory, kCircle),
        Put("EntriesInACircle", EntryField(kMini2, 72), kMini1, "its directory runs in a circle"),
        Put("EntryBeyondTheDirectory", EntryField(kRoot, kChildField), 8, kNoEntryThere),
        Damage{"SectorSize", [](std::string& bytes) { PutU8(bytes, 30, 31); },
               "its header gives sectors an impossible size"},
        Damage{"MiniSectorSize", [](std::string& bytes) { PutU8(bytes, 32, 64); },
               "its header gives sectors an impossible size"},
        Damage{"CutInTheHeader", [](std::string& bytes) { bytes.resize(511); },
               "its header is cut off"},
        Damage{"OnlyHeader", [](std::string& bytes) { bytes.resize(512); }, kPastEnd},
        Damage{"CutInTheFat", [](std::string& bytes) { bytes.resize(SectorAt(kFat) + 8); },
               kNoEntryThere}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(CompoundFileDamageTest, OtherFilesAreNotWorkbooks)
{
    for (const std::string bytes : {"", "PK", "\xD0\xCF\x11\xE0"}) {
        try {
            const CompoundFile file(bytes);
            ADD_FAILURE() << "not refused";
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::NotAWorkbook);
        }
    }
}

TEST(CompoundFileDamageTest, CyclicListOfFatSectors)
{
    std::string bytes = BuildCompound({Stream(u"Workbook", std::string(16'000'000, 'x'))});
    const std::size_t difat = ReadU32(bytes, 68);
    ASSERT_GE(ReadU32(bytes, 72), 2U);
    std::string circle = bytes;
    PutU32(circle, SectorAt(difat) + 508, static_cast<std::uint32_t>(difat));
    EXPECT_THROW(CompoundFile{circle}, util::Error);
    PutU32(bytes, SectorAt(difat), ReadU32(bytes, 76)); // a part of the list twice
    EXPECT_THROW(CompoundFile{bytes}, util::Error);
}

// Oddities that lose nothing.
class CompoundFileOddityTest : public testing::TestWithParam<Damage> {};

TEST_P(CompoundFileOddityTest, IsRead)
{
    std::string bytes = Sound();
    const auto expected = test::SnapshotOf(CompoundFile(bytes));
    GetParam().make(bytes);
    test::ExpectSame(test::SnapshotOf(CompoundFile(bytes)), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Oddities, CompoundFileOddityTest,
    testing::Values(
        Put("MoreSectorTablesThanThereAre", 44, 0x7FFFFFFF, ""), Put("NoSectorTables", 44, 0, ""),
        Put("MoreListsThanThereAre", 72, 0x7FFFFFFF, ""), Put("StartOfAListWithoutOne", 68, 0, ""),
        Put("MoreMiniTablesThanThereAre", 64, 0x7FFFFFFF, ""), Put("SectorTableTooMany", 80, 5, ""),
        Put("SizeAbove32Bits", EntryField(kLong1, kSizeField + 4), 0xCCCCCCCC, ""),
        Put("ChainLongerThanItsStream", FatEntry(kSecondLong - 1), 22, ""),
        Put("MiniStreamLongerThanItsChain", EntryField(kRoot, kSizeField), 100000, ""),
        Put("ChildOfAStream", EntryField(kMini1, kChildField), 0, ""),
        Damage{"LastSectorIsShort", [](std::string& bytes) { bytes.resize(FatEntry(22)); }, ""},
        Damage{"BytesAfterTheLastSector", [](std::string& bytes) { bytes += "x"; }, ""},
        Damage{"MinorVersion", [](std::string& bytes) { PutU16(bytes, 24, 0x21); }, ""}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(CompoundFileOddityTest, ForgetsEntriesThatNoStorageLeadsTo)
{
    std::string bytes = Sound();
    PutU32(bytes, EntryField(kLong1, 72), kNoEntry); // cuts off the last one
    PutU32(bytes, EntryField(kLong2, kStartField), 4000);
    const CompoundFile file(bytes);
    EXPECT_EQ(test::SnapshotOf(file).size(), 4U);
    EXPECT_EQ(file.Entry(kLong2).type, EntryType::Unallocated);
}

TEST(CompoundFileOddityTest, ReadsANameOfImpossibleLengthToItsZero)
{
    std::string bytes = Sound();
    for (const unsigned length : {0U, 1U, 5U, 66U, 0xFFFFU}) {
        PutU16(bytes, EntryField(kMini1, 64), static_cast<std::uint16_t>(length));
        EXPECT_TRUE(CompoundFile(bytes).Find("a")) << length;
    }
}

} // namespace
} // namespace orrery::xls
