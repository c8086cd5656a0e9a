#include "engines/builtin/zip/compression_queue.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>
#include <zlib.h>

namespace orrery::zip {
namespace {

/// Contents of all sizes up to 40,000 bytes, an empty one among them.
std::vector<std::string> Contents()
{
    std::vector<std::string> contents;
    for (std::size_t size = 0; size <= 40'000; size += 400) {
        std::string content;
        for (std::size_t i = 0; content.size() < size; ++i)
            content += "<c r=\"" + std::to_string(i * (size + 7)) + "\"/>";
        content.resize(size);
        contents.push_back(std::move(content));
    }
    return contents;
}

Packed PackedAlone(const std::string& content)
{
    Deflater deflater;
    Packed packed;
    deflater.Compress(content, packed);
    return packed;
}

std::string Unpacked(const Packed& packed)
{
    std::string content(packed.size, '\0');
    z_stream stream = {};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.bytes.data()));
    stream.avail_in = static_cast<uInt>(packed.bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(content.size());
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return result == Z_STREAM_END ? content : "damaged";
}

void ExpectPacked(const Packed& packed, const std::string& content)
{
    ASSERT_EQ(packed.size, content.size());
    EXPECT_EQ(Unpacked(packed), content);
    EXPECT_EQ(packed.crc,
              crc32_z(0, reinterpret_cast<const Bytef*>(content.data()), content.size()));
    EXPECT_EQ(packed.bytes, PackedAlone(content).bytes) << "whoever compresses it";
}

TEST(CompressionQueue, GivesContentsInTheirOrder)
{
    const auto contents = Contents();
    CompressionQueue queue;
    for (const std::string& content : contents)
        queue.Add(content);
    for (const std::string& content : contents)
        ExpectPacked(queue.Take(), content);
}

TEST(CompressionQueue, IsEmptiedAndFilledAgain)
{
    const auto contents = Contents();
    CompressionQueue queue;
    for (std::size_t i = 0; i < contents.size(); ++i) {
        queue.Add(contents[i]);
        queue.Add(contents[contents.size() - 1 - i]);
        if (i % 3 == 0) // the thread has caught up, and waits
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        ExpectPacked(queue.Take(), contents[i]);
        ExpectPacked(queue.Take(), contents[contents.size() - 1 - i]);
    }
}

TEST(CompressionQueue, LeavesWhatWasNotTaken)
{
    const auto contents = Contents();
    for (const std::size_t taken : {0U, 1U, 5U}) {
        CompressionQueue queue;
        for (const std::string& content : contents)
            queue.Add(content);
        for (std::size_t i = 0; i < taken; ++i)
            ExpectPacked(queue.Take(), contents[i]);
    }
}

TEST(Deflater, SaysHowMuchRoomPackedBytesNeed)
{
    std::string noise;
    for (unsigned state = 1; noise.size() < 100'000; state = state * 1664525U + 1013904223U)
        noise += static_cast<char>(state >> 24U);
    EXPECT_LE(PackedAlone(noise).bytes.size(), Deflater::MostPacked(noise.size()));
}

} // namespace
} // namespace orrery::zip
