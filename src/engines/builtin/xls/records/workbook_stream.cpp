#include "engines/builtin/xls/records/workbook_stream.h"

#include "book/error.h"
#include "engines/builtin/xls/records/encryption.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <utility>

namespace orrery::xls {

std::string ReadWholeFile(const std::filesystem::path& path)
{
    auto bytes = util::ReadFile(path);
    if (!bytes)
        throw util::Error(util::ErrorKind::FileNotReadable, util::FromPath(path));
    return std::move(*bytes);
}

EntryId FindWorkbookStream(const CompoundFile& file)
{
    for (const auto* name : {"Workbook", "Book"}) {
        const auto stream = file.Find(name);
        if (stream && file.Entry(*stream).type == EntryType::Stream)
            return *stream;
    }
    throw util::Error(book::ErrorKind::NotAWorkbook);
}

WorkbookStream ReadWorkbookStream(const CompoundFile& file, EntryId stream)
{
    auto stored = file.ReadStream(stream);
    const std::size_t size = stored.size();
    auto bytes = Decrypt(std::move(stored));
    if (!bytes)
        throw util::Error(book::ErrorKind::PasswordProtected);
    const bool wasEncrypted = bytes->size() != size; // decrypting removes a record
    return {std::move(*bytes), wasEncrypted};
}

} // namespace orrery::xls
