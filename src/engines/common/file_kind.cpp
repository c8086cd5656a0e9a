#include "engines/common/file_kind.h"

#include "book/error.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/paths.h"

#include <array>
#include <string_view>

namespace orrery::engines {
namespace {

constexpr std::string_view kCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"; // [MS-CFB] 2.2

/// Whether the bytes begin with the BOF record of such a sheet: type 0x0009, 0x0209 or 0x0409, with
/// 4, 6 or 8 bytes of data.
bool IsOldSheet(std::string_view bytes)
{
    if (bytes.size() < 4)
        return false;
    const auto version = bytes[1];
    const auto size = bytes[2];
    return bytes[0] == '\x09' && (version == 0 || version == 2 || version == 4) &&
           (size == 4 || size == 6 || size == 8) && bytes[3] == 0;
}

} // namespace

FileKind DetectFileKind(const std::filesystem::path& path)
{
    util::InputFile file(path);
    std::array<char, kCompoundFile.size()> begin{};
    const std::string_view bytes(begin.data(), file.Read(begin.data(), begin.size()));
    if (bytes.empty())
        throw util::Error(book::ErrorKind::NotAWorkbook, util::FromPath(path), "it is empty");
    if (bytes == kCompoundFile)
        return FileKind::Compound;
    return IsOldSheet(bytes) ? FileKind::OldSheet : FileKind::Other;
}

} // namespace orrery::engines
