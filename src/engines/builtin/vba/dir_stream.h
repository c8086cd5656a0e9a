#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrery::vba {

/// The name of a module.
struct ModuleName {
    std::string text;  ///< UTF-8
    std::string bytes; ///< in the project's code page, which need not be known
};

/// A module as the project lists it.
struct Module {
    ModuleName name;
    std::string stream;       ///< the name of its stream, UTF-8
    std::uint32_t offset = 0; ///< of its compressed source in the stream; before it is a cache
    bool isDocument = false;  ///< of a sheet or the workbook, or a class or form
};

/// The "dir" stream, which lists what the project refers to and its modules. [MS-OVBA] 2.3.4.2
class DirStream {
public:
    /// Reads the decompressed stream. Throws Error(DamagedWorkbook) without a subject if it is not
    /// as the format wants it, record by record.
    explicit DirStream(std::string bytes);

    const std::vector<Module>& Modules() const { return modules_; }
    /// The names of the project and of what it refers to, in its code page.
    const std::vector<std::string>& OtherNames() const { return otherNames_; }

    /// Adds a module behind its model, by the model's position. Its stream has its name.
    void AddCopy(std::size_t model, const ModuleName& name);
    /// The decompressed stream for modules without caches.
    std::string Bytes() const;

private:
    class Reader;
    /// A range of the bytes; empty at 0 if it is not there.
    struct Range {
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    /// Where a module's record and its fields are. The size of a field is in the 4 bytes before it.
    struct Places {
        Range record;
        Range name;
        Range nameInUnicode;
        Range stream;
        Range streamInUnicode;
        Range offset;
    };

    std::string bytes_;
    std::vector<Module> modules_;
    std::vector<Places> places_; ///< of the modules
    std::vector<std::string> otherNames_;
    Range count_; ///< the number of modules
    std::size_t copies_ = 0;
    builtin::TextPatch patch_;
};

} // namespace orrery::vba
