#pragma once

#include "engines/builtin/vba/copied_macros.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/package/package_edit.h"
#include "engines/builtin/xlsx/package/relationships.h"
#include "util/error.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// The macros of copied sheets. A workbook without copies and one without macros are not looked
/// into.
class CopyMacros {
public:
    /// The package must outlive this object.
    CopyMacros(const Package& package, const std::vector<vba::SheetModule>& sheets);

    /// The code name of the copy at a position, if it has a module.
    std::optional<std::string> CodeNameOf(std::size_t position) const;
    void Put(PackageEdit& edit) const;
    /// What the saved workbook lacks.
    const std::vector<util::Error>& Losses() const { return losses_; }

private:
    void ReadProject(const std::vector<vba::SheetModule>& sheets);
    void FindSignatures();

    const Package& package_;
    std::string part_; ///< with the project
    std::unique_ptr<xls::CompoundFile> file_;
    std::optional<vba::CopiedMacros> macros_;
    std::vector<Relationship> signatures_; ///< of the project's part
    std::vector<util::Error> losses_;
};

} // namespace orrery::xlsx
