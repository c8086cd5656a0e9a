#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

struct StringCase {
    const char* name;
    std::string text;
    std::string bytes; ///< with a count of two bytes
};
class UnicodeStringTest : public testing::TestWithParam<StringCase> {};

TEST_P(UnicodeStringTest, IsWrittenInAsFewBytesAsItTakes)
{
    std::string bytes;
    AppendUnicodeString(bytes, GetParam().text);
    EXPECT_EQ(bytes, GetParam().bytes);
}

TEST_P(UnicodeStringTest, IsReadAsWritten)
{
    const std::string bytes = ".." + GetParam().bytes + "rest";
    const auto read = ReadUnicodeString(bytes, 2);
    EXPECT_EQ(read.text, GetParam().text);
    EXPECT_EQ(read.size, GetParam().bytes.size());
    EXPECT_EQ(UnicodeStringSize(bytes, 2), GetParam().bytes.size());
}

TEST_P(UnicodeStringTest, HasTheSameCharactersWithAShortCount)
{
    std::string bytes;
    AppendShortUnicodeString(bytes, GetParam().text);
    EXPECT_EQ(bytes, GetParam().bytes.substr(0, 1) + GetParam().bytes.substr(2));
    const auto read = ReadShortUnicodeString(bytes, 0);
    EXPECT_EQ(read.text, GetParam().text);
    EXPECT_EQ(read.size, bytes.size());
}

TEST_P(UnicodeStringTest, HasTheSameCharactersWithoutACount)
{
    std::string bytes;
    AppendUnicodeStringNoCount(bytes, GetParam().text);
    EXPECT_EQ(bytes, GetParam().bytes.substr(2));
    const auto count = static_cast<unsigned char>(GetParam().bytes[0]);
    const auto read = ReadUnicodeStringNoCount(bytes, 0, count);
    EXPECT_EQ(read.text, GetParam().text);
    EXPECT_EQ(read.size, bytes.size());
}

TEST_P(UnicodeStringTest, IsDamagedWhenItIsCutOff)
{
    for (std::size_t size = 0; size < GetParam().bytes.size(); ++size) {
        EXPECT_THROW(ReadUnicodeString(GetParam().bytes.substr(0, size), 0), util::Error);
        EXPECT_THROW(UnicodeStringSize(GetParam().bytes.substr(0, size), 0), util::Error);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UnicodeStringTest,
    testing::Values(StringCase{"Empty", "", "\0\0\0"s}, StringCase{"Ascii", "Jan", "\3\0\0Jan"s},
                    StringCase{"LatinTakesOneByte", "M\u00E4\u00FF", "\3\0\0M\xE4\xFF"s},
                    StringCase{"OneWideMakesAllWide", "a\u0142", "\2\0\1a\0\x42\x01"s},
                    StringCase{"PairOfSurrogates", "\U0001F4C5", "\2\0\1\x3D\xD8\xC5\xDC"s}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(UnicodeStringTest, OtherFlagsMeanNothing)
{
    EXPECT_EQ(ReadUnicodeString("\2\0\xFEzz"s, 0).text, "zz");
}

TEST(UnicodeStringTest, ACountBeyondTheBytesIsDamage)
{
    EXPECT_THROW(ReadUnicodeString("\xFF\xFF\1abcdef"s, 0), util::Error);
    EXPECT_THROW(ReadUnicodeString("\1\0\0a"s, static_cast<std::size_t>(-1)), util::Error);
}

} // namespace
} // namespace orrery::xls
