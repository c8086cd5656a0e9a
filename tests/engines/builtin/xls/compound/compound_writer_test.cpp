#include "engines/builtin/xls/compound/compound_writer.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/scratch_folder.h"
#include "xls/built_compound.h"
#include "xls/compound_snapshot.h"
#include "xls/tree_check.h"

#include <chrono>
#include <gtest/gtest.h>
#include <random>

namespace orrery::xls {
namespace {

using test::BuildCompound;
using test::Layout;
using test::Node;
using test::Noise;
using test::Snapshot;
using test::SnapshotOf;
using test::Storage;
using test::Stream;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

std::u16string Name(const std::string& ascii)
{
    return {ascii.begin(), ascii.end()};
}

/// The file that a writer makes; checks its trees.
std::string Written(CompoundWriter writer)
{
    const ScratchFolder folder;
    writer.SaveTo(folder / "out.xls");
    EXPECT_EQ(folder.Entries(), 1);
    std::string bytes = BytesOf(folder / "out.xls");
    EXPECT_EQ(test::FindTreeFault(CompoundFile(bytes).Entries()), "");
    return bytes;
}

/// Random members of a storage, of all sizes; some are storages.
std::vector<Node> RandomMembers(std::mt19937& random, int depth)
{
    constexpr std::array<std::size_t, 10> kStreamSizes = {0,    63,   64,   65,    1000,
                                                          4095, 4096, 4097, 10000, 70000};
    std::vector<Node> members;
    for (std::size_t i = 0, count = random() % 12; i < count; ++i) {
        Node member;
        if (depth > 0 && random() % 3 == 0) {
            member = Storage({}, RandomMembers(random, depth - 1));
            member.classId = Noise(16, static_cast<unsigned>(random()));
            member.stateBits = static_cast<std::uint32_t>(random());
        }
        else {
            member = Stream({}, Noise(kStreamSizes[random() % kStreamSizes.size()],
                                      static_cast<unsigned>(random())));
        }
        member.name = Name(std::string(random() % 4, '_') + std::to_string(i));
        member.modified = random();
        members.push_back(member);
    }
    return members;
}

TEST(CompoundWriterTest, WritesWhatItRead)
{
    for (unsigned seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        const auto shape = seed % 3 == 0 ? test::TreeShape::Reversed : test::TreeShape::Chain;
        const Layout layout{seed % 4 == 0 ? 4096U : 512U, seed % 2 == 0 ? seed : 0, shape};
        const CompoundFile file(BuildCompound(RandomMembers(random, 3), layout));
        const std::string written = Written(CompoundWriter(file));
        const CompoundFile again(written);
        EXPECT_EQ(again.SectorSize(), layout.sectorSize);
        test::ExpectSame(SnapshotOf(again), SnapshotOf(file));
        EXPECT_TRUE(Written(CompoundWriter(again)) == written);
    }
}

TEST(CompoundWriterTest, WritesTheSameInMemory)
{
    for (const std::size_t sectorSize : {512U, 4096U}) {
        const CompoundFile file(
            BuildCompound({Stream(u"a", Noise(100'000, 1)), Storage(u"s", {Stream(u"b", "small")})},
                          {sectorSize}));
        CompoundWriter writer(file);
        writer.ReplaceStream(*file.Find("b", *file.Find("s")), Noise(9000, 2));
        EXPECT_TRUE(CompoundWriter(writer).ToBytes() == Written(writer));
    }
}

TEST(CompoundWriterTest, WritesTwoHundredEntries)
{
    std::vector<Node> members;
    for (int i = 0; i < 200; ++i)
        members.push_back(Stream(Name("Stream" + std::to_string(i)), std::to_string(i)));
    const CompoundFile file(BuildCompound(members));
    test::ExpectSame(SnapshotOf(CompoundFile(Written(CompoundWriter(file)))), SnapshotOf(file));
}

TEST(CompoundWriterTest, WritesLargeFilesWithListsOfFatSectors)
{
    // The 109 FAT sectors in the header describe 109 * 128 sectors: themselves, that of the
    // directory, and the stream.
    constexpr std::size_t kMax = (109 * 128 - 109 - 1) * 512;
    for (const std::size_t size : {kMax, kMax + 1, std::size_t{20'000'000}}) {
        const CompoundFile file(BuildCompound({Stream(u"Workbook", Noise(size, 1))}));
        const std::string written = Written(CompoundWriter(file));
        EXPECT_EQ(ReadU32(written, 72) > 0, size > kMax) << size;
        test::ExpectSame(SnapshotOf(CompoundFile(written)), SnapshotOf(file));
    }
}

TEST(CompoundWriterTest, KeepsTheHeadersClassIdAndVersion)
{
    for (const std::size_t sectorSize : {512U, 4096U}) {
        std::string bytes = BuildCompound({Stream(u"a", "x")}, {sectorSize});
        bytes.replace(8, 16, "0123456789abcdef");
        const std::string written = Written(CompoundWriter(CompoundFile(bytes)));
        EXPECT_EQ(written.substr(0, 34), bytes.substr(0, 34));
        EXPECT_EQ(written.size() % sectorSize, 0U);
        EXPECT_EQ(ReadU32(written, 40), sectorSize == 512 ? 0U : 1U);
    }
}

TEST(CompoundWriterTest, ProducesAStreamPieceByPiece)
{
    const CompoundFile file(
        BuildCompound({Stream(u"Workbook", Noise(5000, 1)), Stream(u"x", "small")}));
    const EntryId workbook = *file.Find("Workbook");
    for (const std::size_t size : {0U, 10U, 4095U, 4096U, 4097U, 1'000'000U}) {
        std::string expected = Noise(size, 2);
        CompoundWriter writer(file);
        writer.ProduceStream(workbook, [&](StreamSink& sink) {
            for (std::size_t at = 0; at < size; at += 1500) {
                EXPECT_EQ(sink.Size(), at);
                sink.Append(std::string_view(expected).substr(at, 1500));
                if (at % 4500 == 0) {
                    sink.Patch(at / 2, "P");
                    expected[at / 2] = 'P';
                }
            }
        });
        Snapshot snapshot = SnapshotOf(file);
        const auto written = SnapshotOf(CompoundFile(Written(writer)));
        snapshot[u"/Workbook"].bytes = expected;
        test::ExpectSame(written, snapshot);
    }
}

TEST(CompoundWriterTest, ReplacesStreamsOfAnySize)
{
    for (const std::size_t before : {0U, 10U, 4096U}) {
        const CompoundFile file(BuildCompound(
            {Stream(u"a", Noise(before, 1)), Storage(u"s", {Stream(u"b", Noise(6000, 3))})}));
        for (const std::size_t after : {0U, 64U, 4095U, 4096U, 9000U}) {
            CompoundWriter writer(file);
            writer.ReplaceStream(*file.Find("a"), Noise(after, 2));
            writer.ReplaceStream(*file.Find("b", *file.Find("s")), "new");
            Snapshot snapshot = SnapshotOf(file);
            snapshot[u"/a"].bytes = Noise(after, 2);
            snapshot[u"/s/b"].bytes = "new";
            test::ExpectSame(SnapshotOf(CompoundFile(Written(writer))), snapshot);
        }
    }
}

TEST(CompoundWriterTest, CopiesStoragesUnderTheRoot)
{
    Node inner = Storage(u"inner", {Stream(u"deep", Noise(5000, 1))});
    inner.classId = "fedcba9876543210";
    Node object = Storage(u"MBD00000001", {Stream(u"\1Ole", "o"), inner, Stream(u"CONTENTS", {})});
    object.classId = "0123456789abcdef";
    object.stateBits = 5;
    const CompoundFile file(BuildCompound({Stream(u"Workbook", Noise(4096, 2)), object}, {512, 7}));
    CompoundWriter writer(file);
    Snapshot expected = SnapshotOf(file);
    const EntryId original = *file.Find("mbd00000001");
    for (int i = 0; i < 30; ++i) {
        const std::string name = "MBD" + std::to_string(900 + i);
        ASSERT_TRUE(writer.CopyStorage(original, name));
        EXPECT_FALSE(writer.CopyStorage(original, name));
        for (const std::u16string path :
             {u"", u"/\1Ole", u"/inner", u"/inner/deep", u"/CONTENTS"}) {
            auto content = expected.at(u"/MBD00000001" + path);
            if (path.empty())
                content.name = Name(name);
            expected[u"/" + Name(name) + path] = content;
        }
    }
    Snapshot written = SnapshotOf(CompoundFile(Written(writer)));
    for (Snapshot* snapshot : {&expected, &written})
        for (auto& [path, content] : *snapshot)
            content.id = 0; // copies have new ids
    test::ExpectSame(written, expected);
}

/// Without ids: a change gives new ones.
Snapshot WithoutIds(Snapshot snapshot)
{
    for (auto& [path, content] : snapshot)
        content.id = 0;
    return snapshot;
}

TEST(CompoundWriterTest, AddsStreamsToAStorage)
{
    const CompoundFile file(
        BuildCompound({Stream(u"Workbook", Noise(4096, 2)), Storage(u"s", {Stream(u"one", "1")})}));
    for (const EntryId storage : {kRootEntry, *file.Find("s")}) {
        CompoundWriter writer(file);
        Snapshot expected = SnapshotOf(file);
        const std::u16string folder = storage == kRootEntry ? u"/" : u"/s/";
        for (unsigned i = 0; i < 40; ++i) {
            const std::string name = "Sheet" + std::to_string(i);
            ASSERT_TRUE(writer.AddStream(storage, name, Noise(i * 300, i)));
            expected[folder + Name(name)] = {
                0, Name(name), EntryType::Stream, std::string(16, '\0'), 0,
                0, 0,          Noise(i * 300, i)};
        }
        test::ExpectSame(WithoutIds(SnapshotOf(CompoundFile(Written(writer)))),
                         WithoutIds(expected));
    }
}

TEST(CompoundWriterTest, AddsNoStreamWithoutAFreeName)
{
    const CompoundFile file(BuildCompound({Storage(u"s", {Stream(u"one", "1")})}));
    CompoundWriter writer(file);
    const EntryId storage = *file.Find("s");
    EXPECT_FALSE(writer.AddStream(storage, "ONE", "2"));
    EXPECT_FALSE(writer.AddStream(storage, "", "2"));
    EXPECT_FALSE(writer.AddStream(storage, std::string(32, 'n'), "2"));
    EXPECT_TRUE(writer.AddStream(storage, std::string(31, 'n'), "2"));
    EXPECT_FALSE(writer.AddStream(storage, std::string(31, 'N'), "2"));
    EXPECT_TRUE(writer.AddStream(kRootEntry, "one", "2")) << "in another storage";
}

TEST(CompoundWriterTest, RemovesStreams)
{
    std::vector<Node> members;
    for (int i = 0; i < 20; ++i)
        members.push_back(Stream(Name("m" + std::to_string(i)), Noise(3000, 1)));
    const CompoundFile file(
        BuildCompound({Stream(u"a", "x"), Stream(u"b", "y"), Storage(u"s", members)}));
    CompoundWriter writer(file);
    Snapshot expected = SnapshotOf(file);
    writer.RemoveStream(*file.Find("a"));
    expected.erase(u"/a");
    for (int i = 0; i < 20; i += 3) {
        const std::string name = "m" + std::to_string(i);
        writer.RemoveStream(*file.Find(name, *file.Find("s")));
        expected.erase(u"/s/" + Name(name));
    }
    ASSERT_TRUE(writer.AddStream(*file.Find("s"), "m0", "again"));
    const Snapshot written = SnapshotOf(CompoundFile(Written(writer)));
    EXPECT_EQ(written.at(u"/s/m0").bytes, "again");
    expected[u"/s/m0"] = written.at(u"/s/m0");
    test::ExpectSame(written, expected);
}

TEST(CompoundWriterTest, AStorageMayLoseAllItsStreams)
{
    const CompoundFile file(
        BuildCompound({Stream(u"a", "x"), Storage(u"s", {Stream(u"one", "1")})}));
    CompoundWriter writer(file);
    writer.RemoveStream(*file.Find("one", *file.Find("s")));
    Snapshot expected = SnapshotOf(file);
    expected.erase(u"/s/one");
    test::ExpectSame(SnapshotOf(CompoundFile(Written(writer))), expected);
}

TEST(CompoundWriterTest, CopiesInTimeThatGrowsWithTheirNumber)
{
    std::vector<Node> objects;
    for (int i = 0; i < 400; ++i)
        objects.push_back(Storage(Name("MBD" + std::to_string(i)), {Stream(u"CONTENTS", "x")}));
    const CompoundFile file(BuildCompound(objects));
    const auto begin = std::chrono::steady_clock::now();
    CompoundWriter writer(file);
    for (int copy = 0; copy < 12; ++copy) {
        for (const EntryId object : file.MembersOf(kRootEntry))
            writer.CopyStorage(object, "C" + std::to_string(copy) + "_" + std::to_string(object));
    }
    EXPECT_EQ(CompoundFile(Written(writer)).MembersOf(kRootEntry).size(), 13U * 400);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(20));
}

TEST(CompoundWriterTest, RefusesNamesThatTheRootCannotTake)
{
    const CompoundFile file(BuildCompound({Storage(u"Object", {})}));
    CompoundWriter writer(file);
    EXPECT_FALSE(writer.CopyStorage(1, "OBJECT"));
    EXPECT_FALSE(writer.CopyStorage(1, ""));
    EXPECT_FALSE(writer.CopyStorage(1, std::string(32, 'x')));
    EXPECT_TRUE(writer.CopyStorage(1, std::string(31, 'x')));
}

TEST(CompoundWriterTest, DropsUnreachableEntries)
{
    std::string bytes = BuildCompound({Stream(u"a", "1"), Stream(u"b", Noise(5000, 1))});
    const std::size_t directory = 512 * (1 + std::size_t{ReadU32(bytes, 48)});
    PutU32(bytes, directory + 128 + 72, kNoEntry);
    const std::string written = Written(CompoundWriter(CompoundFile(bytes)));
    EXPECT_LT(written.size(), 5000U);
    EXPECT_TRUE(CompoundFile(written).Find("a"));
    EXPECT_FALSE(CompoundFile(written).Find("b"));
}

TEST(CompoundWriterSaveTest, LeavesTheOldFileIfTheStreamCannotBeMade)
{
    const ScratchFolder folder;
    const auto target = folder.Write("book.xls", "old");
    const CompoundFile file(BuildCompound({Stream(u"Workbook", "w")}));
    CompoundWriter writer(file);
    writer.ProduceStream(1, [](StreamSink& sink) {
        sink.Append(std::string(100000, 'x'));
        throw util::Error(book::ErrorKind::DamagedWorkbook, "subject");
    });
    EXPECT_THROW(writer.SaveTo(target), util::Error);
    EXPECT_EQ(BytesOf(target), "old");
    EXPECT_EQ(folder.Entries(), 1);
}

TEST(CompoundWriterSaveTest, NamesATargetThatCannotBeWritten)
{
    const ScratchFolder folder;
    const CompoundFile file(BuildCompound({Stream(u"Workbook", "w")}));
    for (const auto& target : {folder.Path(), folder / "no" / "book.xls"}) {
        const auto kind = target == folder.Path() ? util::ErrorKind::NotARegularFile
                                                  : util::ErrorKind::FileNotWritable;
        try {
            CompoundWriter(file).SaveTo(target);
            ADD_FAILURE() << "written";
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), kind);
            EXPECT_EQ(error.Subject(), util::FromPath(target));
        }
    }
    EXPECT_EQ(folder.Entries(), 0);
}

TEST(CompoundWriterSaveTest, SavesMoreThanOnceAlsoOverItsSource)
{
    const ScratchFolder folder;
    const auto target = folder.Write("book.xls", BuildCompound({Stream(u"a", "first")}));
    const CompoundFile file(BytesOf(target));
    CompoundWriter writer(file);
    writer.SaveTo(target);
    writer.ReplaceStream(1, "second");
    writer.SaveTo(target);
    const CompoundFile again(BytesOf(target));
    EXPECT_EQ(again.ReadStream(1), "second");
}

} // namespace
} // namespace orrery::xls
