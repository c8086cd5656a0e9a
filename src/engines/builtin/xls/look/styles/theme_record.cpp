#include "engines/builtin/xls/look/styles/theme_record.h"

#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/zip/inflate.h"
#include "util/error.h"

#include <optional>
#include <string>

namespace orrery::xls {
namespace {

constexpr std::size_t kThemeHead = 16; // the header of newer records, and a version
constexpr std::size_t kMaxTheme = std::size_t{4} << 20U;

// Of zip containers. [APPNOTE] 4.3.7, 4.3.12, 4.3.16
constexpr std::string_view kDirectoryEnd{"PK\5\6", 4};
constexpr std::uint32_t kEntrySignature = 0x02014B50;
constexpr std::uint32_t kLocalSignature = 0x04034B50;
constexpr std::uint16_t kStored = 0;
constexpr std::uint16_t kDeflated = 8;

struct PackedPart {
    std::uint16_t method = 0;
    std::uint32_t packed = 0;
    std::uint32_t size = 0;
    std::uint32_t header = 0;
};

/// The next entry of the directory if it is a theme; moves past the entry.
std::optional<PackedPart> ReadEntry(ByteCursor& cursor)
{
    if (cursor.U32() != kEntrySignature)
        ThrowDamaged("the theme's directory has no entry where one is expected");
    PackedPart part;
    cursor.Skip(6); // versions and flags
    part.method = cursor.U16();
    cursor.Skip(8); // time, date, checksum
    part.packed = cursor.U32();
    part.size = cursor.U32();
    const std::size_t nameSize = cursor.U16();
    const std::size_t more = cursor.U16() + std::size_t{cursor.U16()};
    cursor.Skip(8); // disk and attributes
    part.header = cursor.U32();
    const auto name = cursor.Take(nameSize);
    cursor.Skip(more);
    const bool isTheme = name.ends_with(".xml") && name.find("theme/theme") != name.npos &&
                         name.find("Manager") == name.npos;
    return isTheme ? std::optional(part) : std::nullopt;
}

std::string Unpack(std::string_view package, const PackedPart& part)
{
    ByteCursor cursor(package, part.header);
    if (cursor.U32() != kLocalSignature)
        ThrowDamaged("the theme is not where its directory says");
    cursor.Skip(22);
    const std::size_t nameSize = cursor.U16();
    const std::size_t moreSize = cursor.U16();
    cursor.Skip(nameSize + moreSize);
    const auto packed = cursor.Take(part.packed);
    if (part.method == kStored)
        return std::string(packed);
    if (part.method != kDeflated || part.size > kMaxTheme)
        ThrowDamaged("the theme cannot be unpacked");
    return zip::Inflater().Unpack(packed, part.size);
}

std::string ThemePart(std::string_view package)
{
    const std::size_t end = package.rfind(kDirectoryEnd);
    if (end == package.npos)
        ThrowDamaged("the theme is no package");
    ByteCursor counts(package, end + 10);
    const std::size_t entries = counts.U16();
    counts.Skip(4);
    ByteCursor directory(package, counts.U32());
    for (std::size_t i = 0; i < entries; ++i) {
        if (const auto part = ReadEntry(directory))
            return Unpack(package, *part);
    }
    ThrowDamaged("the package has no theme");
}

} // namespace

builtin::ThemeColors ReadThemeRecord(std::string_view data)
{
    if (data.size() <= kThemeHead)
        return {};
    try {
        return builtin::ParseTheme(ThemePart(data.substr(kThemeHead)));
    }
    catch (const util::Error&) {
        return {};
    }
    catch (const zip::UnpackError&) {
        return {};
    }
}

} // namespace orrery::xls
