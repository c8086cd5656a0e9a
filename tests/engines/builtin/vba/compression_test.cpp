#include "engines/builtin/vba/compression.h"

#include "book/error.h"
#include "util/error.h"
#include "vba/built_project.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace orrery::vba {
namespace {

using namespace std::string_literals;
using xls::test::Noise;

constexpr std::size_t kEnough = std::size_t{1} << 20U;

bool CanBeDecompressed(const std::string& container, std::size_t most = kEnough)
{
    try {
        Decompress(container, most);
        return true;
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        return false;
    }
}

struct Vector {
    const char* name;
    std::string container;
    std::string bytes;
};

class KnownContainerTest : public testing::TestWithParam<Vector> {};

TEST_P(KnownContainerTest, IsDecompressed)
{
    EXPECT_EQ(Decompress(GetParam().container, kEnough), GetParam().bytes);
}

// Made by hand from the rules. A token of one byte stands for itself; the flags before eight tokens
// say, from the lowest bit on, which of them are copies.
INSTANTIATE_TEST_SUITE_P(
    Containers, KnownContainerTest,
    testing::Values(
        Vector{"Empty", "\x01", ""},
        // 2 bytes of header, 2 of flags, 9 literals: 13, less 3
        Vector{"Literals", "\x01\x0A\xB0\0abcdefgh\0i"s, "abcdefghi"},
        // one byte back, 69 + 3 bytes long
        Vector{"OneByteAgainAndAgain", "\x01\x03\xB0\x02\x61\x45\0"s, std::string(73, 'a')},
        // after 16 bytes 4 bits tell how far back: 16; after 19 bytes it is 5 bits: 17
        Vector{"MoreBitsForTheOffset", "\x01\x16\xB0\0abcdefgh\0ijklmnop\x03\0\xF0\0\x80"s,
               "abcdefghijklmnopabccde"},
        Vector{"Raw", "\x01\xFF\x3F" + std::string(4096, 'r'), std::string(4096, 'r')},
        Vector{"ChunksOneAfterAnother",
               "\x01\xFF\x3F" + std::string(4096, 'r') + "\x03\xB0\x02\x61\x45\0"s,
               std::string(4096, 'r') + std::string(73, 'a')},
        // one byte and the longest copy: 4095 bytes of 12 bits
        Vector{"WholeChunkInOneCopy", "\x01\x03\xB0\x02\x61\xFC\x0F"s, std::string(4096, 'a')}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(CompressTest, FindsWhatIsRepeated)
{
    EXPECT_EQ(Compress(""), "\x01");
    EXPECT_EQ(Compress("abcdefghi"), "\x01\x0A\xB0\0abcdefgh\0i"s);
    EXPECT_EQ(Compress(std::string(73, 'a')), "\x01\x03\xB0\x02\x61\x45\0"s);
    EXPECT_EQ(Compress(std::string(4096, 'a')), "\x01\x03\xB0\x02\x61\xFC\x0F"s);
}

TEST(CompressTest, StoresWhatDoesNotBecomeSmaller)
{
    const std::string noise = Noise(4096, 7);
    EXPECT_EQ(Compress(noise), "\x01\xFF\x3F" + noise);
}

std::string Lines(std::size_t size)
{
    std::string text;
    for (int line = 1; text.size() < size; ++line)
        text += "    Range(\"B" + std::to_string(line * 7 % 101) +
                "\").Value = " + std::to_string(line * line) + " ' of " + std::to_string(line) +
                "\r\n";
    text.resize(size);
    return text;
}

/// Bytes of four kinds: long and short matches, at every distance.
std::string Mixed(std::size_t size)
{
    std::string bytes = Noise(size, 3);
    for (char& byte : bytes)
        byte = static_cast<char>(byte & 3);
    return bytes;
}

TEST(CompressTest, DecompressesToTheSameBytes)
{
    for (const std::size_t size :
         {1U,   2U,   3U,    4U,    7U,    8U,    9U,    16U,   17U,   18U,    255U,
          256U, 257U, 4095U, 4096U, 4097U, 4098U, 8191U, 8192U, 8193U, 12289U, 100000U}) {
        for (const std::string& bytes :
             {Lines(size), Mixed(size), std::string(size, '\0'), std::string(size, ' ')}) {
            const std::string container = Compress(bytes);
            EXPECT_EQ(Decompress(container, size), bytes) << size;
            EXPECT_LT(container.size(), size + size / 4 + 16);
        }
    }
    EXPECT_LT(Compress(Lines(100000)).size(), 60000U);
}

TEST(CompressTest, NoiseIsFilledToAWholeChunkAtMost)
{
    for (const std::size_t size :
         {1U, 100U, 3640U, 3660U, 4095U, 4096U, 4097U, 7736U, 7760U, 8192U}) {
        const std::string noise = Noise(size, static_cast<unsigned>(size));
        std::string expected = noise;
        // 3640 literals and their flags just fit.
        if (size % 4096 > 3640)
            expected.resize((size + 4095) / 4096 * 4096);
        EXPECT_EQ(Decompress(Compress(noise), kEnough), expected) << size;
    }
}

TEST(DecompressTest, RefusesMoreThanItMayGive)
{
    const std::string container = Compress(std::string(100000, 'x'));
    EXPECT_TRUE(CanBeDecompressed(container, 100000));
    EXPECT_FALSE(CanBeDecompressed(container, 99999));
}

TEST(DecompressTest, RefusesDamage)
{
    EXPECT_FALSE(CanBeDecompressed(""));
    EXPECT_FALSE(CanBeDecompressed("\x02\x03\xB0\x02\x61\x45\0"s)) << "another signature";
    EXPECT_FALSE(CanBeDecompressed("\x01\x03\x80\x02\x61\x45\0"s)) << "the chunk's, too";
    EXPECT_FALSE(CanBeDecompressed("\x01\x02\xB0\x01\x45\0"s)) << "a copy of nothing";
    EXPECT_FALSE(CanBeDecompressed("\x01\x03\xB0\x02\x61\x45\x10"s)) << "from before the chunk";
    EXPECT_FALSE(CanBeDecompressed("\x01\x03\xB0\x02\x61\xFD\x0F"s)) << "4097 bytes";
    EXPECT_FALSE(CanBeDecompressed("\x01\xFE\x3F" + std::string(4095, 'r'))) << "raw, and short";
    EXPECT_FALSE(CanBeDecompressed("\x01\xFF\x3F" + std::string(4096, 'r') + "\x02\xB0\x01\x45\0"s))
        << "from the chunk before";
}

TEST(DecompressTest, RefusesWhatIsCutOff)
{
    const std::string container = Compress(Lines(5000));
    const std::size_t first = 1 + (xls::ReadU16(container, 1) & 0xFFFU) + 3; // a chunk ends
    for (std::size_t size = 0; size < container.size(); ++size) {
        const bool isWhole = size == 1 || size == first;
        EXPECT_EQ(CanBeDecompressed(container.substr(0, size)), isWhole) << size;
    }
}

TEST(DecompressTest, StandsAnyBytes)
{
    const std::string container = Compress(Lines(9000));
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        std::string damaged = container;
        const std::string where = Noise(8, seed);
        damaged[xls::ReadU32(where, 0) % damaged.size()] = where[4];
        damaged[xls::ReadU32(where, 1) % damaged.size()] = where[5];
        CanBeDecompressed(damaged);
        CanBeDecompressed("\x01" + Noise(seed % 300, seed));
    }
}

} // namespace
} // namespace orrery::vba
