#include "util/file_replace.h"

#include "util/error.h"
#include "util/paths.h"

#include <array>
#include <fstream>
#include <system_error>

namespace orrery::util {

std::optional<std::string> ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::error_code unknown;
    const auto size = std::filesystem::file_size(path, unknown);
    std::string bytes;
    if (!unknown && size < bytes.max_size())
        bytes.reserve(static_cast<std::size_t>(size));
    std::array<char, 65536> chunk;
    while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0)
        bytes.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
    if (file.bad())
        return std::nullopt;
    return bytes;
}

bool CanWriteIn(std::string_view folder)
{
    try {
        const FileReplacement never(ToPath(WithTrailingSeparator(folder) + "orrery-probe"));
        return true;
    }
    catch (const Error&) {
        return false;
    }
}

FileReplacement::~FileReplacement()
{
    std::error_code ignored; // a leftover is harmless and a destructor cannot report it
    if (!committed_)
        std::filesystem::remove(temporary_, ignored);
}

} // namespace orrery::util
