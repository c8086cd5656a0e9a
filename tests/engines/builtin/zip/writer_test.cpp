#include "engines/builtin/zip/writer.h"

#include "util/error.h"
#include "util/scratch_folder.h"
#include "zip/built_zip.h"
#include "zip/thrown_kind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace orrery::zip {
namespace {

using test::BuildZip;
using test::KindThrownBy;
using test::kMiB;
using test::PackedBytes;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

const std::string kSample = "All work and no play makes Jack a dull boy. All work and no play ...";

TEST(Writer, CopiesPackedBytesAndTimes)
{
    const ScratchFolder folder;
    const std::string source = BuildZip({{"packed", kSample + kSample},
                                         {"stored", kSample, true},
                                         {"empty", ""},
                                         {"large", std::string(kMiB, 'x')},
                                         {"folder/", "", true}});
    const Reader reader(folder.Write("a.zip", source));
    Writer writer;
    for (std::size_t i = 0; i < reader.Entries().size(); ++i)
        writer.CopyEntry(reader, i, reader.Entries()[i].name);
    writer.CopyEntry(reader, 0, "again");
    writer.Write(folder / "b.zip");

    const std::string copy = BytesOf(folder / "b.zip");
    for (const char* const name : {"packed", "stored", "empty", "large", "folder/"}) {
        ASSERT_TRUE(PackedBytes(copy, name)) << name;
        EXPECT_EQ(PackedBytes(copy, name), PackedBytes(source, name)) << name;
    }
    EXPECT_EQ(PackedBytes(copy, "again"), PackedBytes(source, "packed"));
    EXPECT_EQ(copy.substr(10, 4), source.substr(10, 4)) << "time and date of the first entry";

    const Reader read(folder / "b.zip");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < read.Entries().size(); ++i)
        names.push_back(read.Entries()[i].name);
    EXPECT_THAT(names,
                testing::ElementsAre("packed", "stored", "empty", "large", "folder/", "again"));
    EXPECT_EQ(read.Read(5), kSample + kSample);
}

TEST(Writer, CopiesEntriesOfStreamsAndZip64)
{
    const ScratchFolder folder;
    const std::string packed = test::Deflate(kSample, 1);
    const Reader reader(folder.Write("a.zip", BuildZip({{"descriptor", kSample, false, true},
                                                        {"zip64", kSample, false, false, true}})));
    Writer writer;
    writer.CopyEntry(reader, 0, "descriptor");
    writer.CopyEntry(reader, 1, "zip64");
    writer.Write(folder / "b.zip");
    const std::string copy = BytesOf(folder / "b.zip");
    EXPECT_EQ(PackedBytes(copy, "descriptor"), packed);
    EXPECT_EQ(PackedBytes(copy, "zip64"), packed);
}

TEST(Writer, PacksNewEntries)
{
    const ScratchFolder folder;
    Writer writer;
    writer.AddEntry("a.xml", [](EntrySink& sink) { sink.Add(kSample + kSample); });
    writer.AddEntry("empty.xml", [](EntrySink& sink) { sink.Add(""); });
    writer.AddEntry("large.xml", [](EntrySink& sink) { sink.Add(std::string(5 * kMiB, 'x')); });
    writer.Write(folder / "a.zip");
    const Reader reader(folder / "a.zip");
    EXPECT_EQ(reader.Read(0), kSample + kSample);
    EXPECT_LT(reader.Entries()[0].packed, kSample.size());
    EXPECT_EQ(reader.Read(1), "");
    EXPECT_EQ(reader.Read(2), std::string(5 * kMiB, 'x'));
}

TEST(Writer, WritesPlainHeadersOfAFixedDate)
{
    const ScratchFolder folder;
    for (const char* const name : {"a.zip", "b.zip"}) {
        Writer writer;
        writer.AddEntry("a.xml", [](EntrySink& sink) { sink.Add(kSample); });
        writer.Write(folder / name);
    }
    const std::string bytes = BytesOf(folder / "a.zip");
    EXPECT_EQ(bytes, BytesOf(folder / "b.zip"));
    EXPECT_EQ(bytes.substr(4, 2), std::string("\x14\0", 2)) << "version 2.0, not zip64";
    EXPECT_EQ(bytes.substr(6, 2), std::string(2, '\0')) << "no descriptor";
    EXPECT_EQ(bytes.substr(10, 4), std::string("\0\0\x21\0", 4)) << "1980-01-01";
}

TEST(Writer, AsksForOneContentAtATime)
{
    const ScratchFolder folder;
    std::vector<std::string> asked;
    Writer writer;
    for (const char* const name : {"a", "b", "c"})
        writer.AddEntry(name, [&asked, name](EntrySink& sink) {
            asked.emplace_back(name);
            sink.Add(kSample);
        });
    EXPECT_TRUE(asked.empty()) << "nothing is made before the end";
    writer.Write(folder / "a.zip");
    EXPECT_THAT(asked, testing::ElementsAre("a", "b", "c"));
}

TEST(Writer, PassesOnWhatAProducerThrows)
{
    const ScratchFolder folder;
    {
        Writer writer;
        writer.AddEntry("a", [](EntrySink& sink) { sink.Add(kSample); });
        writer.AddEntry("b", [](EntrySink&) { throw std::invalid_argument("mine"); });
        EXPECT_THROW(writer.Write(folder / "a.zip"), std::invalid_argument);
    }
    EXPECT_EQ(folder.Entries(), 0) << "nothing is left behind";
}

TEST(Writer, KeepsTheAttributesOfCopiesAndMarksNamesBeyondAscii)
{
    const ScratchFolder folder;
    const Reader reader(folder.Write("a.zip", BuildZip({{"a", kSample}, {"b", kSample}})));
    Writer writer;
    writer.CopyEntry(reader, 0,
                     "xl/gr\xC3\xB6\xC3\x9F"
                     "e.xml");
    writer.CopyEntry(reader, 1, "plain");
    writer.Write(folder / "b.zip");
    const Reader copy(folder / "b.zip");
    EXPECT_EQ(copy.Entries()[0].name, "xl/gr\xC3\xB6\xC3\x9F"
                                      "e.xml");
    EXPECT_EQ(copy.Entries()[0].attributes, reader.Entries()[0].attributes);
    EXPECT_EQ(copy.Entries()[0].system, reader.Entries()[0].system);
    const std::string bytes = BytesOf(folder / "b.zip");
    EXPECT_EQ(bytes.substr(6, 2), std::string("\0\x08", 2)) << "the name is in UTF-8";
    EXPECT_EQ(bytes.substr(copy.Entries()[1].header + 6, 2), std::string(2, '\0'));
}

TEST(Writer, CountsMoreEntriesThanAnOldContainerCan)
{
    constexpr std::size_t kCount = 65'600;
    const ScratchFolder folder;
    const Reader reader(folder.Write("a.zip", BuildZip({{"a", "1"}})));
    Writer writer;
    for (std::size_t i = 0; i < kCount; ++i)
        writer.CopyEntry(reader, 0, std::to_string(i));
    writer.Write(folder / "b.zip");
    const Reader copy(folder / "b.zip");
    ASSERT_EQ(copy.Entries().size(), kCount);
    EXPECT_EQ(copy.Entries().back().name, std::to_string(kCount - 1));
    EXPECT_EQ(copy.Read(kCount - 1), "1");
}

TEST(Writer, NamesTheFileThatCannotBeWritten)
{
    const ScratchFolder folder;
    Writer writer;
    writer.AddEntry("a", [](EntrySink& sink) { sink.Add(kSample); });
    EXPECT_EQ(KindThrownBy([&] { writer.Write(folder / "none/a.zip"); }),
              util::ErrorKind::FileNotWritable);
}

} // namespace
} // namespace orrery::zip
