#pragma once

#include "engines/builtin/vba/project.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::vba {

/// A sheet as it is saved.
struct SheetModule {
    std::string codeName; ///< a copy's is its model's; empty if there is none
    bool isCopy = false;
};

/// Whether a copied sheet may need a module.
bool MayNeedModules(const std::vector<SheetModule>& sheets);

/// The macros of a workbook whose sheets were copied: the copy of a sheet whose module has code has
/// a module with that code. If that cannot be done, no copy has one.
class CopiedMacros {
public:
    /// The project in a storage of the file, which must outlive this object.
    CopiedMacros(const xls::CompoundFile& file, xls::EntryId storage,
                 const std::vector<SheetModule>& sheets);

    /// Whether there are modules of copies, so that the project changes.
    bool IsChanged() const { return project_.has_value(); }
    /// The code name of the copy at a position; empty if it has no module.
    const std::string& CodeNameOf(std::size_t position) const { return codeNames_[position]; }
    std::uint64_t AddedBytes() const { return project_ ? project_->AddedBytes() : 0; }
    void WriteTo(xls::CompoundWriter& writer) const;
    /// MacrosNotCopied if it could not be done.
    const std::optional<util::Error>& Loss() const { return loss_; }

private:
    void AddModules(Project& project, const std::vector<SheetModule>& sheets);

    std::optional<Project> project_;
    std::vector<std::string> codeNames_; ///< by position
    std::optional<util::Error> loss_;
};

/// MacrosNotCopied because of an error.
util::Error MacrosNotCopied(const util::Error& why);

} // namespace orrery::vba
