#pragma once

#include "engines/builtin/vba/dir_stream.h"
#include "engines/builtin/vba/project_text.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/compound/compound_writer.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::vba {

/// The macros of a workbook, to which modules for copied sheets are added. A sheet and its module
/// have one name, the code name. What protects the project stays; programs compile it again, since
/// what they compiled is left out with everything that they keep only to be faster.
class Project {
public:
    /// Reads the project in a storage of the file, which must outlive it. Throws
    /// Error(DamagedWorkbook) without a subject unless everything in it can be read.
    Project(const xls::CompoundFile& file, xls::EntryId storage);

    /// A code name that no new module gets, although it may have no module.
    void Reserve(const std::string& codeName);
    /// Whether the module of a sheet or workbook has code. The case of the name does not matter.
    bool HasCode(const std::string& codeName) const;
    /// Adds a copy of that module. Returns its code name: the first that is free, numbered like its
    /// model's. Throws like the constructor; the project is then of no use.
    std::string AddCopy(const std::string& codeName);

    /// The bytes that the copies add, without what the project leaves out.
    std::uint64_t AddedBytes() const;
    void WriteTo(xls::CompoundWriter& writer) const;

private:
    struct Copy {
        std::string stream;
        std::string source; ///< compressed
    };

    struct NameOrder {
        bool operator()(const std::u16string& left, const std::u16string& right) const
        {
            return xls::CompareNames(left, right) < 0;
        }
    };

    void ReadModules();
    xls::EntryId StreamOf(const Module& listed);
    std::string SourceOf(std::size_t module) const;
    const std::size_t* FindDocument(const std::string& codeName) const;
    ModuleName FreeName(const ModuleName& model);
    bool IsTaken(const ModuleName& name) const;

    const xls::CompoundFile& file_;
    xls::EntryId storage_; ///< of the streams of the modules
    xls::EntryId cacheStream_;
    xls::EntryId dirStream_;
    xls::EntryId textStream_;
    std::optional<xls::EntryId> namesStream_;
    DirStream dir_;
    ProjectText text_;
    std::optional<ProjectNames> names_;
    std::map<std::u16string, xls::EntryId, NameOrder> members_; ///< of that storage
    std::vector<xls::EntryId> streams_;                         ///< of the modules
    std::set<xls::EntryId> used_;                ///< these, and those of the whole project
    std::map<std::string, std::size_t> byName_;  ///< modules by folded name
    std::set<std::string> taken_;                ///< folded names
    std::map<std::string, std::size_t> numbers_; ///< the next for names, by the rest of the name
    std::vector<Copy> copies_;
};

} // namespace orrery::vba
