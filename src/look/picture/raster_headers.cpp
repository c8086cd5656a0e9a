#include "look/picture/byte_view.h"
#include "look/picture/headers.h"
#include "look/picture/picture.h"

#include <cmath>

namespace orrery::look {

namespace {

constexpr double kMetersPerInch = 0.0254;

std::optional<PictureInfo> Sized(PictureInfo info)
{
    if (!(info.width >= 1 && info.height >= 1))
        return std::nullopt;
    return info;
}

/// The resolution of a PNG file: chunk pHYs, which comes before the pixels.
void ReadPngResolution(const ByteView& view, std::string_view bytes, PictureInfo& info)
{
    std::size_t at = 33; // behind the signature and IHDR
    while (view.Has(at, 12)) {
        const std::size_t length = view.U32(at);
        const auto name = bytes.substr(at + 4, 4);
        if (name == "IDAT")
            return;
        if (name == "pHYs" && length == 9 && view.U8(at + 16) == 1) {
            info.resolutionX = view.U32(at + 8) * kMetersPerInch;
            info.resolutionY = view.U32(at + 12) * kMetersPerInch;
            return;
        }
        if (!view.Has(at + 12, length))
            return;
        at += length + 12;
    }
}

/// JFIF's segment says dots for an inch or a centimetre.
void ReadJfif(const ByteView& view, std::string_view bytes, std::size_t at, PictureInfo& info)
{
    if (bytes.substr(at + 4, 5) != std::string_view("JFIF\0", 5))
        return;
    const double unit = view.U8(at + 11) == 1 ? 1 : view.U8(at + 11) == 2 ? 2.54 : 0;
    info.resolutionX = view.U16(at + 12) * unit;
    info.resolutionY = view.U16(at + 14) * unit;
}

/// SOF0 to SOF15, without DHT, JPG and DAC, which lie among them.
bool IsFrame(unsigned marker)
{
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

} // namespace

std::optional<PictureInfo> ReadPng(std::string_view bytes)
{
    const ByteView view(bytes, true);
    if (!view.Has(0, 33) || bytes.substr(0, 8) != "\x89PNG\r\n\x1A\n" ||
        bytes.substr(12, 4) != "IHDR")
        return std::nullopt;
    PictureInfo info;
    info.width = view.U32(16);
    info.height = view.U32(20);
    ReadPngResolution(view, bytes, info);
    return Sized(info);
}

std::optional<PictureInfo> ReadJpeg(std::string_view bytes)
{
    const ByteView view(bytes, true);
    if (view.U16(0) != 0xFFD8)
        return std::nullopt;
    PictureInfo info;
    info.type = PictureType::Jpeg;
    std::size_t at = 2;
    while (view.Has(at, 10) && view.U8(at) == 0xFF) {
        const unsigned marker = view.U8(at + 1);
        if (marker == 0xFF) { // fill bytes before a marker
            ++at;
            continue;
        }
        if (IsFrame(marker)) {
            info.height = view.U16(at + 5);
            info.width = view.U16(at + 7);
            const unsigned channels = view.U8(at + 9);
            info.isCommonJpeg =
                marker <= 0xC2 && view.U8(at + 4) == 8 && (channels == 1 || channels == 3);
            return Sized(info);
        }
        const std::size_t length = view.U16(at + 2);
        if (marker == 0xE0)
            ReadJfif(view, bytes, at, info);
        if (length < 2 || marker == 0xDA)
            return std::nullopt;
        at += length + 2;
    }
    return std::nullopt;
}

std::optional<PictureInfo> ReadGif(std::string_view bytes)
{
    const auto signature = bytes.substr(0, 6);
    if (signature != "GIF87a" && signature != "GIF89a")
        return std::nullopt;
    const ByteView view(bytes, false);
    PictureInfo info;
    info.type = PictureType::Gif;
    info.width = view.U16(6);
    info.height = view.U16(8);
    return Sized(info);
}

std::optional<PictureInfo> ReadBmp(std::string_view bytes)
{
    const ByteView view(bytes, false);
    const std::uint32_t headerSize = view.U32(14);
    if (bytes.substr(0, 2) != "BM" || !view.Has(0, 26) || headerSize < 12 || headerSize > 200)
        return std::nullopt;
    PictureInfo info;
    info.type = PictureType::Bmp;
    if (headerSize < 40) {
        info.width = view.U16(18);
        info.height = view.U16(20);
        return Sized(info);
    }
    info.width = view.I32(18);
    info.height = std::abs(static_cast<double>(view.I32(22))); // negative: rows from the top
    info.resolutionX = view.U32(38) * kMetersPerInch;
    info.resolutionY = view.U32(42) * kMetersPerInch;
    return Sized(info);
}

std::optional<PictureInfo> ReadRasterInfo(std::string_view bytes)
{
    for (const auto read : {ReadPng, ReadJpeg, ReadGif, ReadBmp}) {
        if (const auto info = read(bytes))
            return info;
    }
    return std::nullopt;
}

} // namespace orrery::look
