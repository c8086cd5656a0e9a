// A compound file is refused, or the file written from it has the same content in valid trees and
// is written the same again. A copy of its first storage has the content of that storage.

#include "require.h"

#include "engines/builtin/xls/compound/compound_writer.h"
#include "engines/builtin/xls/records/encryption.h"
#include "util/error.h"
#include "util/file_replace.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include <unistd.h>

namespace {

using namespace orrery;
using fuzz::Require;
using xls::CompoundFile;
using xls::DirectoryEntry;
using xls::EntryId;

std::string Written(xls::CompoundWriter writer)
{
    static const std::filesystem::path folder =
        std::filesystem::exists("/dev/shm") ? "/dev/shm" : std::filesystem::temp_directory_path();
    static const auto target = folder / ("orrery-fuzz-" + std::to_string(getpid()) + ".compound");
    writer.SaveTo(target);
    auto bytes = util::ReadFile(target);
    Require(bytes.has_value());
    std::filesystem::remove(target);
    return std::move(*bytes);
}

void RequireSame(const CompoundFile& left, const CompoundFile& right)
{
    for (EntryId id = 0; id < left.Entries().size(); ++id) {
        const DirectoryEntry& a = left.Entry(id);
        const DirectoryEntry& b = right.Entry(id);
        Require(a.type == b.type && a.name == b.name && a.parent == b.parent);
        Require(a.classId == b.classId && a.stateBits == b.stateBits);
        Require(a.created == b.created && a.modified == b.modified);
        if (a.IsStream())
            Require(left.ReadStream(id) == right.ReadStream(id));
    }
}

void RequireOrder(const CompoundFile& file)
{
    for (EntryId id = 0; id < file.Entries().size(); ++id) {
        if (!file.Entry(id).IsStorage())
            continue;
        const auto members = file.MembersOf(id);
        for (std::size_t i = 1; i < members.size(); ++i)
            Require(xls::CompareNames(file.Entry(members[i - 1]).name,
                                      file.Entry(members[i]).name) < 0);
    }
}

std::optional<EntryId> FirstStorage(const CompoundFile& file)
{
    for (EntryId id = 1; id < file.Entries().size(); ++id) {
        if (file.Entry(id).IsStorage())
            return id;
    }
    return std::nullopt;
}

void CopyAStorage(const CompoundFile& file)
{
    const auto storage = FirstStorage(file);
    xls::CompoundWriter writer(file);
    const auto copy = storage ? writer.CopyStorage(*storage, "MBD0Copy") : std::nullopt;
    if (!copy)
        return;
    const CompoundFile again(Written(writer));
    RequireSame(file, again);
    RequireOrder(again);
    Require(again.Find("mbd0COPY") == copy);
    Require(again.MembersOf(*copy).size() == file.MembersOf(*storage).size());
}

void DecryptStream(const CompoundFile& file)
{
    try {
        if (const auto stream = file.Find("Workbook"); stream && file.Entry(*stream).IsStream())
            xls::Decrypt(file.ReadStream(*stream));
    }
    catch (const Error&) {
        // damaged
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::optional<CompoundFile> file;
    try {
        file.emplace(std::string(reinterpret_cast<const char*>(data), size));
    }
    catch (const Error&) {
        return 0;
    }
    const std::string written = Written(xls::CompoundWriter(*file));
    const CompoundFile again(written);
    RequireSame(*file, again);
    RequireOrder(again);
    Require(Written(xls::CompoundWriter(again)) == written);
    CopyAStorage(*file);
    DecryptStream(*file);
    return 0;
}
