#include "engines/builtin/xls/look/drawing/picture_file.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/zip/inflate.h"
#include "util/error.h"

#include <algorithm>
#include <limits>

namespace orrery::xls {
namespace {

// Types of records. [MS-ODRAW] 2.2.23
constexpr std::uint16_t kEmf = 0xF01A;
constexpr std::uint16_t kWmf = 0xF01B;
constexpr std::uint16_t kJpeg = 0xF01D;
constexpr std::uint16_t kPng = 0xF01E;
constexpr std::uint16_t kDib = 0xF01F;
constexpr std::uint16_t kTiff = 0xF029;
constexpr std::uint16_t kCmykJpeg = 0xF02A;

/// Each picture has a digest of 16 bytes before it; those with this bit in their instance have two,
/// except for JPEG, where one bit is that of the colour space.
std::size_t DigestsSize(std::uint16_t type, std::uint16_t instance)
{
    constexpr std::size_t kDigest = 16;
    const bool isJpeg = type == kJpeg || type == kCmykJpeg;
    const bool hasTwo = isJpeg ? instance == 0x46B || instance == 0x6E3 : (instance & 1U) != 0;
    return hasTwo ? 2 * kDigest : kDigest;
}

std::string_view TypeName(std::uint16_t type)
{
    switch (type) {
    case kEmf:
        return "emf";
    case kWmf:
        return "wmf";
    case kJpeg:
    case kCmykJpeg:
        return "jpeg";
    case kPng:
        return "png";
    case kDib:
        return "bmp";
    case kTiff:
        return "tiff";
    default:
        return {};
    }
}

/// What stands before a metafile. [MS-ODRAW] 2.2.31
struct MetafileHeader {
    static constexpr std::size_t kSize = 34;

    std::size_t size = 0; ///< unpacked
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    std::int32_t width = 0; ///< EMU
    bool isPacked = false;

    explicit MetafileHeader(std::string_view data)
        : size(ReadU32(data, 0)), left(Signed(data, 4)), top(Signed(data, 8)),
          right(Signed(data, 12)), bottom(Signed(data, 16)), width(Signed(data, 20)),
          isPacked(ReadU8(data, 32) == 0)
    {
    }

private:
    static std::int32_t Signed(std::string_view data, std::size_t at)
    {
        return static_cast<std::int32_t>(ReadU32(data, at));
    }
};

std::string Unpack(std::string_view packed, std::size_t most)
{
    constexpr std::size_t kZlibHeader = 2; // [RFC 1950]
    std::string bytes;
    zip::InflateStream stream;
    stream.Add(packed.substr(std::min(packed.size(), kZlibHeader)), [&](std::string_view piece) {
        if (bytes.size() + piece.size() > most)
            throw zip::UnpackError("is too large");
        bytes += piece;
    });
    stream.Finish();
    return bytes;
}

/// The header of a .wmf file, which says how large it is drawn. [MS-WMF] 2.3.2.3
std::string WmfHeader(const MetafileHeader& metafile)
{
    constexpr double kEmuPerInch = 914400;
    constexpr std::int64_t kMost = std::numeric_limits<std::int16_t>::max();
    std::int64_t width = std::int64_t{metafile.right} - metafile.left;
    std::int64_t height = std::int64_t{metafile.bottom} - metafile.top;
    width = width > 0 ? width : 1;
    height = height > 0 ? height : 1;
    double unitsPerInch =
        metafile.width > 0 ? static_cast<double>(width) * kEmuPerInch / metafile.width : 96.0;
    const std::int64_t larger = std::max(width, height);
    if (larger > kMost) {
        unitsPerInch = unitsPerInch * static_cast<double>(kMost) / static_cast<double>(larger);
        width = std::max<std::int64_t>(1, width * kMost / larger);
        height = std::max<std::int64_t>(1, height * kMost / larger);
    }
    const bool fits = metafile.left >= -kMost && metafile.left + width <= kMost &&
                      metafile.top >= -kMost && metafile.top + height <= kMost;
    const std::int64_t left = fits ? metafile.left : 0;
    const std::int64_t top = fits ? metafile.top : 0;
    std::string header;
    AppendU32(header, 0x9AC6CDD7);
    AppendU16(header, 0);
    for (const std::int64_t side : {left, top, left + width, top + height})
        AppendU16(header, static_cast<std::uint16_t>(static_cast<std::int16_t>(side)));
    AppendU16(header, static_cast<std::uint16_t>(std::clamp(unitsPerInch, 1.0, 65535.0)));
    AppendU32(header, 0);
    std::uint16_t checksum = 0;
    for (std::size_t at = 0; at < header.size(); at += 2)
        checksum = static_cast<std::uint16_t>(checksum ^ ReadU16(header, at));
    AppendU16(header, checksum);
    return header;
}

std::string MetafileBytes(std::uint16_t type, std::string_view data, std::size_t most)
{
    const MetafileHeader header(data);
    const std::string_view content = data.substr(MetafileHeader::kSize);
    std::string bytes =
        header.isPacked ? Unpack(content, std::min(most, header.size)) : std::string(content);
    constexpr std::uint32_t kHasHeader = 0x9AC6CDD7;
    const bool needsHeader = type == kWmf && (bytes.size() < 4 || ReadU32(bytes, 0) != kHasHeader);
    return needsHeader ? WmfHeader(header) + bytes : bytes;
}

/// The header of a .bmp file before a bitmap in memory; its pixels follow the table of colours.
std::string BmpBytes(std::string_view dib)
{
    constexpr std::uint32_t kFileHeader = 14;
    constexpr std::uint32_t kCoreHeader = 12;
    constexpr std::uint32_t kInfoHeader = 40;
    constexpr std::uint32_t kBitFields = 3;
    const std::uint32_t headerSize = ReadU32(dib, 0);
    std::uint32_t colors = 0;
    std::uint32_t before = 0; // bytes between the header and the pixels
    if (headerSize == kCoreHeader) {
        const unsigned depth = ReadU16(dib, 10);
        before = depth <= 8 ? 3U << depth : 0;
    }
    else {
        const unsigned depth = ReadU16(dib, 14);
        colors = std::min(ReadU32(dib, 32), 256U);
        if (colors == 0 && depth <= 8)
            colors = 1U << depth;
        before = 4 * colors;
        if (headerSize == kInfoHeader && ReadU32(dib, 16) == kBitFields)
            before += 12;
    }
    Slice(dib, headerSize, before);
    std::string bytes = "BM";
    AppendU32(bytes, static_cast<std::uint32_t>(kFileHeader + dib.size()));
    AppendU32(bytes, 0);
    AppendU32(bytes, kFileHeader + headerSize + before);
    return bytes.append(dib);
}

std::string FileBytes(std::uint16_t type, std::uint16_t instance, std::string_view data,
                      std::size_t most)
{
    data = Slice(data, DigestsSize(type, instance), data.size() - DigestsSize(type, instance));
    if (type == kEmf || type == kWmf)
        return MetafileBytes(type, data, most);
    data = Slice(data, 1, data.size() - 1); // behind a tag
    return type == kDib ? BmpBytes(data) : std::string(data);
}

} // namespace

std::optional<PictureFile> ReadPictureFile(std::uint16_t type, std::uint16_t instance,
                                           std::string_view data, std::size_t most)
{
    const std::string_view name = TypeName(type);
    if (name.empty() || data.size() > most)
        return std::nullopt;
    try {
        PictureFile file{std::string(name), FileBytes(type, instance, data, most)};
        return file.bytes.empty() ? std::nullopt : std::optional(std::move(file));
    }
    catch (const util::Error&) {
        return std::nullopt;
    }
    catch (const zip::UnpackError&) {
        return std::nullopt;
    }
}

} // namespace orrery::xls
