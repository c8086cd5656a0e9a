#pragma once

#include "engines/builtin/vba/copied_macros.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/sheet/template_sheet.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {

/// The macros of copied sheets. A workbook without copies and one without macros are not looked
/// into.
class CopyMacros {
public:
    /// The file must outlive this object.
    CopyMacros(const CompoundFile& file, const std::vector<TemplateSheet>& originals,
               const std::vector<SavedSheet>& sheets);

    /// The code name of the copy at a position, if it has a module.
    std::optional<std::string> CodeNameOf(std::size_t position) const;
    std::uint64_t AddedBytes() const { return macros_ ? macros_->AddedBytes() : 0; }
    void WriteTo(CompoundWriter& writer) const;
    /// What the saved workbook lacks.
    const std::vector<util::Error>& Losses() const { return losses_; }

private:
    void RemoveSignature(const CompoundFile& file);

    std::optional<vba::CopiedMacros> macros_;
    std::optional<EntryId> properties_; ///< the stream that has the signature
    std::string unsignedProperties_;
    std::vector<util::Error> losses_;
};

} // namespace orrery::xls
