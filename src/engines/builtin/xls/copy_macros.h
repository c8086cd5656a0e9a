#pragma once

#include "engines/builtin/vba/project.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/sheet/template_sheet.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {

/// The macros of copied sheets: the copy of a sheet whose module has code gets a module with that
/// code. If that cannot be done, no copy has one. A workbook without copies and one without macros
/// are not looked into.
class CopyMacros {
public:
    /// The file must outlive this object.
    CopyMacros(const CompoundFile& file, const std::vector<TemplateSheet>& originals,
               const std::vector<SavedSheet>& sheets);

    /// The code name of the copy at a position, if it has a module.
    std::optional<std::string> CodeNameOf(std::size_t position) const;
    std::uint64_t AddedBytes() const { return project_ ? project_->AddedBytes() : 0; }
    void WriteTo(CompoundWriter& writer) const;
    /// What the saved workbook lacks.
    const std::vector<util::Error>& Losses() const { return losses_; }

private:
    void AddModules(EntryId storage, const std::vector<std::optional<std::string>>& codeNames,
                    const std::vector<SavedSheet>& sheets);
    void FindSignature();

    const CompoundFile& file_;
    std::optional<vba::Project> project_;          ///< if there is a module to be added
    std::map<std::size_t, std::string> codeNames_; ///< of copies, by position
    std::optional<EntryId> properties_;            ///< the stream with the signature
    std::string propertiesWithoutSignature_;
    std::vector<util::Error> losses_;
};

} // namespace orrery::xls
