#include "engines/builtin/common/file_kind.h"

#include "util/error.h"
#include "util/paths.h"
#include "util/text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace orrery::builtin {
namespace {

// [MS-CFB] 2.2 and 2.6.1. The directory is not followed but looked for: its entries begin at
// multiples of their size and have a shape that other data hardly has.
constexpr std::string_view kCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::size_t kEntrySize = 128;
constexpr std::size_t kNameSizeOffset = 64; // in bytes, the final zero included
constexpr std::size_t kTypeOffset = 66;
constexpr unsigned kStreamType = 2;
constexpr std::size_t kSearched = std::size_t{64} << 20;

unsigned ByteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

/// The name of a stream's entry, in ASCII; nothing where the bytes are no such entry.
std::optional<std::string> StreamName(std::string_view entry)
{
    const std::size_t size =
        ByteAt(entry, kNameSizeOffset) + 256 * ByteAt(entry, kNameSizeOffset + 1);
    if (ByteAt(entry, kTypeOffset) != kStreamType || size < 4 || size > kNameSizeOffset ||
        size % 2 != 0)
        return std::nullopt;
    std::string name;
    for (std::size_t at = 0; at < size; at += 2) {
        const bool last = at + 2 == size;
        if (entry[at + 1] != '\0' || (entry[at] == '\0') != last)
            return std::nullopt;
        name += entry[at];
    }
    name.pop_back();
    return name;
}

std::optional<FileKind> KindOfStream(std::string_view name)
{
    const auto is = [name](std::string_view other) { return util::EqualIgnoringCase(name, other); };
    if (is("EncryptedPackage"))
        return FileKind::ProtectedPackage;
    if (is("Workbook") || is("Book"))
        return FileKind::OldWorkbook;
    if (is("WordDocument") || is("PowerPoint Document"))
        return FileKind::Other;
    return std::nullopt;
}

/// The first stream that tells decides: a program's own stream lies before those of objects that
/// are embedded in its document.
FileKind KindOfCompoundFile(std::ifstream& file)
{
    std::array<char, 512 * kEntrySize> chunk;
    for (std::size_t searched = 0; searched < kSearched; searched += chunk.size()) {
        file.read(chunk.data(), chunk.size());
        const std::string_view bytes(chunk.data(), static_cast<std::size_t>(file.gcount()));
        for (std::size_t at = 0; at + kEntrySize <= bytes.size(); at += kEntrySize) {
            const auto name = StreamName(bytes.substr(at, kEntrySize));
            const auto kind = name ? KindOfStream(*name) : std::nullopt;
            if (kind)
                return *kind;
        }
        if (!file)
            break;
    }
    return FileKind::Other;
}

} // namespace

FileKind DetectFileKind(const std::filesystem::path& path)
{
    std::error_code unknown;
    if (!std::filesystem::exists(path, unknown))
        throw util::Error(util::ErrorKind::FileNotFound, util::FromPath(path));
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path, unknown))
        throw util::Error(util::ErrorKind::FileNotReadable, util::FromPath(path));
    std::array<char, kCompoundFile.size()> magic{};
    file.read(magic.data(), magic.size());
    if (file.gcount() == 0)
        return FileKind::Other;
    if (std::string_view(magic.data(), magic.size()) != kCompoundFile)
        return FileKind::Zip;
    file.clear();
    file.seekg(0);
    return KindOfCompoundFile(file);
}

} // namespace orrery::builtin
