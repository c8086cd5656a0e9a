#include "look/picture/picture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::look {
namespace {

using namespace std::string_literals;

std::string Little(std::uint64_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i));
    return text;
}
std::string Big(std::uint32_t value, int bytes)
{
    const auto text = Little(value, bytes);
    return {text.rbegin(), text.rend()};
}

// Headers as the formats' documents lay them out, without the pixels.
std::string Png(std::uint32_t width, std::uint32_t height)
{
    return "\x89PNG\r\n\x1A\n"s + Big(13, 4) + "IHDR" + Big(width, 4) + Big(height, 4) +
           "\x08\x02\x00\x00\x00"s + Big(0, 4) + Big(9, 4) + "pHYs" + Big(3937, 4) + Big(7874, 4) +
           "\x01" + Big(0, 4) + Big(0, 4) + "IDAT" + Big(0, 4);
}
std::string Jpeg()
{
    return "\xFF\xD8"s + "\xFF\xE0" + Big(16, 2) + "JFIF\0\x01\x02\x01"s + Big(72, 2) + Big(36, 2) +
           "\0\0"s + "\xFF\xC4" + Big(4, 2) + "ab" + "\xFF\xFF\xC2" + Big(11, 2) + "\x08" +
           Big(480, 2) + Big(640, 2) + "\x01\x01\x11\0"s;
}
std::string Gif()
{
    return "GIF89a" + Little(320, 2) + Little(200, 2) + "\0\0\0"s;
}
std::string Bmp(std::int32_t height)
{
    return "BM" + Little(0, 4) + Little(0, 4) + Little(54, 4) + Little(40, 4) + Little(30, 4) +
           Little(static_cast<std::uint32_t>(height), 4) + Little(1, 2) + Little(24, 2) +
           Little(0, 8) + Little(3937, 4) + Little(3937, 4) + Little(0, 8);
}
std::string TiffEntry(std::uint32_t tag, std::uint32_t type, std::uint32_t value)
{
    return Big(tag, 2) + Big(type, 2) + Big(1, 4) +
           (type == 3 ? Big(value, 2) + "\0\0"s : Big(value, 4));
}
std::string Tiff()
{
    return "MM\0*"s + Big(16, 4) + Big(100, 4) + Big(2, 4) + Big(4, 2) + TiffEntry(256, 3, 12) +
           TiffEntry(257, 4, 34) + TiffEntry(282, 5, 8) + TiffEntry(296, 3, 3) + Big(0, 4);
}
std::string Emf()
{
    return Little(1, 4) + Little(88, 4) + std::string(16, '\0') + Little(0, 4) + Little(0, 4) +
           Little(2540, 4) + Little(5080, 4) + " EMF" + std::string(44, '\0');
}
std::string Wmf()
{
    return Little(0x9AC6CDD7, 4) + Little(0, 2) + Little(0xFF9C, 2) + Little(0, 2) +
           Little(620, 2) + Little(1440, 2) + Little(1440, 2) + std::string(24, '\0');
}

struct PictureCase {
    const char* name;
    std::string bytes;
    PictureType type;
    double width;
    double height;
    double resolutionX;
    double resolutionY;
};
class PictureInfoTest : public testing::TestWithParam<PictureCase> {};

TEST_P(PictureInfoTest, ReadsTypeAndSize)
{
    const auto info = ReadPictureInfo(GetParam().bytes);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->type, GetParam().type);
    EXPECT_NEAR(info->width, GetParam().width, 0.01);
    EXPECT_NEAR(info->height, GetParam().height, 0.01);
    EXPECT_NEAR(info->resolutionX, GetParam().resolutionX, 0.01);
    EXPECT_NEAR(info->resolutionY, GetParam().resolutionY, 0.01);
    EXPECT_FALSE(ReasonNotShown(GetParam().bytes));
}

/// No beginning of a picture is read past its end, whatever it tells.
TEST_P(PictureInfoTest, BearsAnyCut)
{
    for (std::size_t length = 0; length < GetParam().bytes.size(); ++length) {
        // On the heap with nothing behind it, so that a sanitizer sees every step too far.
        const std::vector<char> cut(GetParam().bytes.begin(),
                                    GetParam().bytes.begin() + static_cast<std::ptrdiff_t>(length));
        const auto info = ReadPictureInfo({cut.data(), cut.size()});
        EXPECT_TRUE(!info || info->type == GetParam().type);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, PictureInfoTest,
    testing::Values(PictureCase{"Png", Png(640, 480), PictureType::Png, 640, 480, 100, 200},
                    PictureCase{"Jpeg", Jpeg(), PictureType::Jpeg, 640, 480, 72, 36},
                    PictureCase{"Gif", Gif(), PictureType::Gif, 320, 200, 0, 0},
                    PictureCase{"Bmp", Bmp(20), PictureType::Bmp, 30, 20, 100, 100},
                    PictureCase{"BmpFromTheTop", Bmp(-20), PictureType::Bmp, 30, 20, 100, 100},
                    PictureCase{"TiffInCentimetres", Tiff(), PictureType::Tiff, 12, 34, 127, 0},
                    PictureCase{"EmfOfAnInch", Emf(), PictureType::Emf, 96, 192, 0, 0},
                    PictureCase{"WmfOfHalfAnInch", Wmf(), PictureType::Wmf, 48, 96, 0, 0},
                    PictureCase{"WmfWithoutSize",
                                Little(1, 2) + Little(9, 2) + Little(0x300, 2) + "....",
                                PictureType::Wmf, 0, 0, 0, 0},
                    PictureCase{"Svg", "<?xml version='1.0'?>\n<svg width=\"2in\" height='30'>",
                                PictureType::Svg, 192, 30, 0, 0},
                    PictureCase{"SvgWithAViewBoxAlone",
                                "<svg stroke-width=\"3\" viewBox=\"0,0 40 50\" height=\"100%\"/>",
                                PictureType::Svg, 40, 50, 0, 0}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(ReadPictureInfoTest, KnowsNothingElse)
{
    for (const std::string& bytes :
         {""s, "GIF90a\1\0\1\0"s, "hello"s, "<html></html>"s, std::string(1000, '\0'), "BM"s})
        EXPECT_FALSE(ReadPictureInfo(bytes)) << bytes;
}

TEST(ReadPictureInfoTest, NeedsASize)
{
    EXPECT_FALSE(ReadPictureInfo(Png(0, 480)));
    EXPECT_FALSE(ReadPictureInfo(Bmp(0)));
}

TEST(ReadPictureInfoTest, SizesOfVectorsAreNeverNegative)
{
    const auto info = ReadPictureInfo("<svg viewBox='0 0 -5 1e999'/>");
    ASSERT_TRUE(info);
    EXPECT_EQ(info->width, 0);
    EXPECT_EQ(info->height, 0);
}

TEST(ReasonNotShownTest, NamesWhatIsTooLarge)
{
    EXPECT_EQ(ReasonNotShown(Png(100'000, 100'000)), "it has more than 100,000,000 pixels");
    EXPECT_FALSE(ReasonNotShown(Png(10'000, 10'000)));
    EXPECT_EQ(ReasonNotShown(std::string(kLargestPicture + 1, ' ')), "it is larger than 64 MiB");
    EXPECT_EQ(ReasonNotShown("hello"), "it is damaged, or of an unknown kind");
}

} // namespace
} // namespace orrery::look
