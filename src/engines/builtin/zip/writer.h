#pragma once

#include "engines/builtin/zip/deflate.h"
#include "engines/builtin/zip/reader.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace orrery::zip {

/// Makes the content of a new entry.
using Producer = std::function<void(EntrySink&)>;

/// Writes a new zip container. Content is requested when the container is written, one entry at a
/// time, so that only the contents of a few are in memory.
class Writer {
public:
    /// Adds an entry with the packed bytes, the time and the attributes of another container's.
    /// `source` must live until `Write` returns.
    void CopyEntry(const Reader& source, std::size_t index, const std::string& name);
    /// Adds an entry compressed with deflate and dated 1980, so that equal content gives equal
    /// bytes.
    void AddEntry(const std::string& name, Producer content);
    /// Writes everything to a file, which is created or emptied. Throws Error (FileNotWritable,
    /// DiskFull, FileSizeLimit; for the container that entries are copied from FileNotReadable,
    /// DamagedWorkbook) and what a producer throws. The file is removed then.
    void Write(const std::filesystem::path& path) const;

private:
    /// An entry to be written; one with a producer has no source.
    struct Planned {
        std::string name;
        Producer content;
        const Reader* source = nullptr;
        std::size_t index = 0; ///< in the source
    };

    std::vector<Planned> entries_;
};

} // namespace orrery::zip
