#include "engines/builtin/zip/deflate.h"
#include "engines/builtin/zip/writer.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace orrery::zip {
namespace {

using testing_support::ScratchFolder;

constexpr std::size_t kChunk = SharedText::kChunk;

/// Digits with few repetitions, so that each chunk differs from the others.
std::string Digits(std::size_t size)
{
    std::string text;
    for (unsigned value = 1; text.size() < size; value = value * 1664525 + 1013904223)
        text += std::to_string(value);
    text.resize(size);
    return text;
}

using Range = std::pair<std::size_t, std::size_t>;

/// An entry whose content is these ranges of a text with a mark after each.
void AddRanges(Writer& writer, const std::string& name, SharedText& text,
               const std::vector<Range>& ranges)
{
    writer.AddEntry(name, [&text, ranges](EntrySink& sink) {
        for (const auto& [begin, end] : ranges) {
            sink.Add(text, begin, end);
            sink.Add("|");
        }
    });
}

std::string Expected(const std::string& text, const std::vector<Range>& ranges)
{
    std::string expected;
    for (const auto& [begin, end] : ranges)
        expected += text.substr(begin, end - begin) + "|";
    return expected;
}

TEST(SharedText, GivesEachEntryItsBytesWhereverTheChunksBegin)
{
    const std::string digits = Digits(4 * kChunk + 123);
    const std::vector<std::vector<Range>> entries = {
        {{0, digits.size()}},
        {{0, kChunk}, {kChunk, 3 * kChunk}},
        {{1, 2 * kChunk}, {2 * kChunk, digits.size()}},
        {{kChunk - 1, kChunk + 1}, {kChunk + 1, 3 * kChunk - 1}, {3 * kChunk, 3 * kChunk}},
        {{4 * kChunk, digits.size()}, {0, 2 * kChunk}, {0, 2 * kChunk}},
        {{3, 5}},
    };
    const ScratchFolder folder;
    SharedText text(digits);
    Writer writer;
    for (std::size_t i = 0; i < entries.size(); ++i)
        AddRanges(writer, std::to_string(i), text, entries[i]);
    writer.Write(folder / "a.zip");
    const Reader reader(folder / "a.zip"); // which compares the checksums, too
    for (std::size_t i = 0; i < entries.size(); ++i)
        EXPECT_EQ(reader.Read(i), Expected(digits, entries[i])) << "entry " << i;
}

TEST(SharedText, CompressesAChunkOnce)
{
    const std::string digits = Digits(2 * kChunk);
    SharedText text(digits);
    const Packed* const first = &text.Chunk(1);
    EXPECT_EQ(&text.Chunk(1), first);
    EXPECT_EQ(first->size, kChunk);
    EXPECT_LT(first->bytes.size(), kChunk);
}

TEST(SharedText, CostsLittleInSize)
{
    const std::string digits = Digits(8 * kChunk);
    SharedText text(digits);
    EntrySink shared;
    shared.Add(text, 0, digits.size());
    EntrySink whole;
    whole.Add(digits);
    EXPECT_LT(static_cast<double>(std::get<Packed>(shared.Finish()).bytes.size()),
              1.01 * static_cast<double>(std::get<Packed>(whole.Finish()).bytes.size()));
}

TEST(SharedText, OfLessThanAChunkIsAContentLikeOthers)
{
    const std::string digits = Digits(kChunk - 1);
    SharedText text(digits);
    EntrySink sink;
    sink.Add(text, 0, 100);
    sink.Add(text, 100, digits.size());
    EXPECT_EQ(std::get<std::string>(sink.Finish()), digits);
}

} // namespace
} // namespace orrery::zip
