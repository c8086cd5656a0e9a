#include "engines/builtin/xls/look/drawing/picture_file.h"

#include "engines/builtin/xls/compound/bytes.h"

#include "xls/stream_builder.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace orrery::xls {
namespace {

using namespace std::string_literals;
using test::Numbers;

constexpr std::size_t kEnough = 1 << 20;
const std::string kDigest(16, '\x11');

std::string Packed(const std::string& bytes)
{
    const auto length = static_cast<uLong>(bytes.size());
    std::string packed(compressBound(length), '\0');
    auto size = static_cast<uLongf>(packed.size());
    compress(reinterpret_cast<Bytef*>(packed.data()), &size,
             reinterpret_cast<const Bytef*>(bytes.data()), length);
    packed.resize(size);
    return packed;
}

/// The header before a metafile, 254 by 127 units large, one inch by half an inch.
std::string MetafileHeader(std::size_t size, bool isPacked)
{
    std::string header;
    for (const std::uint32_t number :
         {static_cast<std::uint32_t>(size), 10U, 20U, 264U, 147U, 914400U, 457200U, 0U})
        AppendU32(header, number);
    AppendU8(header, isPacked ? 0 : 0xFE);
    AppendU8(header, 0xFE);
    return header;
}

TEST(PictureFileTest, TakesBitmapsAsTheyAre)
{
    const auto png = ReadPictureFile(0xF01E, 0x6E0, kDigest + "\xFF" + "png", kEnough);
    ASSERT_TRUE(png);
    EXPECT_EQ(png->type, "png");
    EXPECT_EQ(png->bytes, "png");
    const auto jpeg = ReadPictureFile(0xF01D, 0x46B, kDigest + kDigest + "\xFF" + "jpeg", kEnough);
    ASSERT_TRUE(jpeg);
    EXPECT_EQ(jpeg->type, "jpeg");
    EXPECT_EQ(jpeg->bytes, "jpeg");
    const auto cmyk = ReadPictureFile(0xF01D, 0x6E2, kDigest + "\xFF" + "jpeg", kEnough);
    ASSERT_TRUE(cmyk);
    EXPECT_EQ(cmyk->bytes, "jpeg");
}

TEST(PictureFileTest, UnpacksMetafiles)
{
    const std::string emf(1000, 'e');
    const auto file = ReadPictureFile(
        0xF01A, 0x3D4, kDigest + MetafileHeader(emf.size(), true) + Packed(emf), kEnough);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->type, "emf");
    EXPECT_EQ(file->bytes, emf);
    const auto plain = ReadPictureFile(
        0xF01A, 0x3D5, kDigest + kDigest + MetafileHeader(3, false) + "emf", kEnough);
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->bytes, "emf");
}

TEST(PictureFileTest, GivesWindowsMetafilesTheirHeader)
{
    const auto file =
        ReadPictureFile(0xF01B, 0x216, kDigest + MetafileHeader(4, true) + Packed("wmf!"), kEnough);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->type, "wmf");
    ASSERT_EQ(file->bytes.size(), 22U + 4U);
    EXPECT_EQ(ReadU32(file->bytes, 0), 0x9AC6CDD7U);
    EXPECT_EQ(file->bytes.substr(6, 10), Numbers({10, 20, 264, 147, 254})) << "units per inch last";
    std::uint16_t checksum = 0;
    for (std::size_t at = 0; at < 20; at += 2)
        checksum = static_cast<std::uint16_t>(checksum ^ ReadU16(file->bytes, at));
    EXPECT_EQ(ReadU16(file->bytes, 20), checksum);
    EXPECT_EQ(file->bytes.substr(22), "wmf!");
}

TEST(PictureFileTest, FitsTheBoxOfALargeMetafileIntoItsHeader)
{
    std::string header = MetafileHeader(4, false);
    PutU32(header, 4, 0);
    PutU32(header, 8, 0);
    PutU32(header, 12, 327670);
    PutU32(header, 16, 65534);
    const auto file = ReadPictureFile(0xF01B, 0x216, kDigest + header + "wmf!", kEnough);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->bytes.substr(6, 10), Numbers({0, 0, 32767, 6553, 32767}));
}

/// A bitmap in memory: its header, colours, pixels.
std::string DibOf(std::uint16_t depth, std::uint32_t compression, std::uint32_t colors,
                  std::string_view rest)
{
    std::string dib;
    for (const std::uint32_t number : {40U, 1U, 1U})
        AppendU32(dib, number);
    dib += Numbers({1, depth});
    for (const std::uint32_t number : {compression, 0U, 0U, 0U, colors, 0U})
        AppendU32(dib, number);
    return dib.append(rest);
}

TEST(PictureFileTest, GivesBitmapsTheHeaderOfFiles)
{
    const auto pixelsOf = [](const std::string& dib) {
        const auto file = ReadPictureFile(0xF01F, 0x7A8, kDigest + "\xFF" + dib, kEnough);
        EXPECT_TRUE(file);
        EXPECT_EQ(file->type, "bmp");
        EXPECT_EQ(file->bytes.substr(0, 2), "BM");
        EXPECT_EQ(ReadU32(file->bytes, 2), file->bytes.size());
        return file->bytes.substr(ReadU32(file->bytes, 10));
    };
    EXPECT_EQ(pixelsOf(DibOf(24, 0, 0, "pixels")), "pixels");
    EXPECT_EQ(pixelsOf(DibOf(1, 0, 0, "........pixels")), "pixels");
    EXPECT_EQ(pixelsOf(DibOf(8, 0, 3, "............pixels")), "pixels");
    EXPECT_EQ(pixelsOf(DibOf(32, 3, 0, "............pixels")), "pixels");
}

TEST(PictureFileTest, RefusesDamagedUnknownAndLargePictures)
{
    EXPECT_FALSE(ReadPictureFile(0xF01E, 0x6E0, "short", kEnough));
    EXPECT_FALSE(ReadPictureFile(0xF01E, 0x6E0, kDigest + "\xFF", kEnough)) << "empty";
    EXPECT_FALSE(ReadPictureFile(0xF01C, 0x542, kDigest + "pict", kEnough));
    EXPECT_FALSE(ReadPictureFile(0xF01F, 0x7A8, kDigest + "\xFF" + DibOf(8, 0, 0, "few"), kEnough));
    EXPECT_FALSE(
        ReadPictureFile(0xF01A, 0x3D4, kDigest + MetafileHeader(10, true) + "not packed", kEnough));
    const std::string bomb = Packed(std::string(100000, '\0'));
    EXPECT_FALSE(
        ReadPictureFile(0xF01A, 0x3D4, kDigest + MetafileHeader(100000, true) + bomb, 50000));
    EXPECT_FALSE(ReadPictureFile(0xF01E, 0x6E0, kDigest + "\xFF" + std::string(100, 'p'), 50));
}

} // namespace
} // namespace orrery::xls
