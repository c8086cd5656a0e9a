#include "engines/builtin/zip/directory.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>

namespace orrery::zip {
namespace {

constexpr std::size_t kEndRecord = 22;   // without its comment
constexpr std::size_t kLocator = 20;     // of the zip64 end record; right before the end record
constexpr std::size_t kEndRecord64 = 56; // without its extensible data
constexpr std::size_t kHeader = 46;      // of an entry, without name, extra fields and comment
constexpr std::size_t kMaxComment = 0xFFFF;

std::uint64_t ReadNumber(std::string_view bytes, std::size_t at, std::size_t size)
{
    std::uint64_t number = 0;
    for (std::size_t i = size; i > 0; --i)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i - 1]);
    return number;
}

/// A file that is read in pieces.
class Source {
public:
    explicit Source(const std::filesystem::path& path)
        : file_(path, std::ios::binary | std::ios::ate)
    {
        size_ = static_cast<std::uint64_t>(std::max<std::streamoff>(file_.tellg(), 0));
    }

    std::uint64_t Size() const { return size_; }
    /// Empty if the file ends before.
    std::string Read(std::uint64_t at, std::uint64_t count)
    {
        if (at > size_ || size_ - at < count)
            return {};
        std::string bytes(static_cast<std::size_t>(count), '\0');
        file_.seekg(static_cast<std::streamoff>(at));
        file_.read(bytes.data(), static_cast<std::streamsize>(count));
        return file_ ? bytes : std::string();
    }

private:
    std::ifstream file_;
    std::uint64_t size_ = 0;
};

/// The offset of the last end record in the file's tail: the one whose comment ends with the file,
/// else the last of all.
std::optional<std::size_t> FindEndRecord(std::string_view tail)
{
    constexpr std::string_view kSignature = "PK\x05\x06";
    std::optional<std::size_t> last;
    for (std::size_t at = tail.rfind(kSignature); at != tail.npos;
         at = at == 0 ? tail.npos : tail.rfind(kSignature, at - 1)) {
        if (tail.size() - at < kEndRecord)
            continue;
        if (at + kEndRecord + ReadNumber(tail, at + 20, 2) == tail.size())
            return at;
        last = last ? last : at;
    }
    return last;
}

struct Directory {
    std::uint64_t begin = 0;
    std::uint64_t size = 0;
    std::uint64_t entries = 0;
};

/// The directory is right before its end record, whatever offset the record gives: there may be
/// other data in front of the container.
std::optional<Directory> FindDirectory(Source& file)
{
    const std::uint64_t tailSize = std::min<std::uint64_t>(file.Size(), kEndRecord + kMaxComment);
    const std::uint64_t tailBegin = file.Size() - tailSize;
    const std::string tail = file.Read(tailBegin, tailSize);
    const auto end = FindEndRecord(tail);
    if (!end)
        return std::nullopt;
    Directory directory{tailBegin + *end, ReadNumber(tail, *end + 12, 4),
                        ReadNumber(tail, *end + 10, 2)};
    const std::string locator = directory.begin < kLocator
                                    ? std::string()
                                    : file.Read(directory.begin - kLocator, kLocator);
    if (locator.starts_with("PK\x06\x07") && directory.begin >= kLocator + kEndRecord64) {
        directory.begin -= kLocator + kEndRecord64;
        const std::string end64 = file.Read(directory.begin, kEndRecord64);
        if (!end64.starts_with("PK\x06\x06"))
            return std::nullopt;
        directory.entries = ReadNumber(end64, 32, 8);
        directory.size = ReadNumber(end64, 40, 8);
    }
    if (directory.size > directory.begin)
        return std::nullopt;
    directory.begin -= directory.size;
    return directory;
}

} // namespace

std::optional<std::vector<std::string>> ReadDirectoryNames(const std::filesystem::path& path)
{
    Source file(path);
    const auto directory = FindDirectory(file);
    if (!directory)
        return std::nullopt;
    const std::string bytes = file.Read(directory->begin, directory->size);
    std::vector<std::string> names;
    for (std::size_t at = 0; names.size() < directory->entries;) {
        if (bytes.size() - at < kHeader || bytes.compare(at, 4, "PK\x01\x02") != 0)
            return std::nullopt;
        const std::size_t name = ReadNumber(bytes, at + 28, 2);
        const std::size_t rest = ReadNumber(bytes, at + 30, 2) + ReadNumber(bytes, at + 32, 2);
        if (bytes.size() - at - kHeader < name + rest)
            return std::nullopt;
        names.push_back(bytes.substr(at + kHeader, name));
        at += kHeader + name + rest;
    }
    return names;
}

} // namespace orrery::zip
