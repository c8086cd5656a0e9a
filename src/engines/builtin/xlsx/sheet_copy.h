#pragma once

#include "engines/builtin/xlsx/copy_plan.h"
#include "engines/builtin/xlsx/formula/references.h"
#include "engines/builtin/xlsx/identities.h"
#include "engines/builtin/xlsx/package/package.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// The names of sheets and tables as seen from one sheet, asked for when its parts are written.
struct NamesOfOwner {
    std::function<SheetNames()> sheets;
    std::function<TableNames()> tables;
};

/// A sheet's copy in the package.
struct CopiedSheet {
    std::string part;
    std::shared_ptr<const CopyIdentity> identity;
    std::vector<std::string> parts; ///< all of them
};

/// Copies sheets within a package: the sheet's part and every part that it owns (drawings, charts,
/// comments, tables, controls, printer settings ...). Pictures and what belongs to the workbook
/// (pivot caches, persons, slicer caches) are shared.
class SheetCopier {
public:
    using Content = std::function<std::string()>;
    /// The most that a workbook may become by copies: as many parts as a zip container can list
    /// without its 64-bit extension, and as many unpacked bytes as are read.
    static constexpr std::size_t kMostParts = 65535;
    static constexpr std::uint64_t kMostBytes = zip::kMostUnpacked;

    /// The package outlives the copier.
    SheetCopier(Package& package, const std::vector<std::string>& definedNames);

    /// Copies the template's sheet `model`, or changes nothing. `content` gives the copy's own text
    /// when the package is saved; `names` what the copy calls the sheets then. Throws Error
    /// (DamagedWorkbook, TooDeeplyNested, TooLargeOutput). What could not be copied once cannot be
    /// copied later.
    CopiedSheet Copy(const std::string& model, Content content, NamesOfOwner names);
    /// Takes the last copy out of the package again.
    void TakeBack(const CopiedSheet& copy);

private:
    CopiedSheet CopyOnce(const std::string& model, Content content, NamesOfOwner names);
    struct Owner; // what the parts of one copy share
    void CheckLimits(const CopyPlan& plan) const;
    /// What a part of the copy consists of; nothing where it is its model's bytes.
    Content ContentOf(const std::string& part, const std::shared_ptr<const Owner>& owner);
    void Put(const CopyPlan& plan, std::vector<Content> contents,
             const std::shared_ptr<const Owner>& owner);
    const std::vector<ReferenceSite>& ReferencesOf(const std::string& part);

    Package& package_;
    Identities identities_;
    PartNumbers numbers_;
    std::uint64_t copied_ = 0;                                     // unpacked bytes
    std::map<std::string, util::Error> refusals_;                  // by model
    std::map<std::string, std::vector<ReferenceSite>> references_; // by the PartKey of the original
};

/// Whether the relationships hold links into the workbook ("#Sheet1!A1").
bool HasInnerLinks(const Relationships& relationships);
/// The relationships with such links renamed; the same where no name changes.
Relationships RenameInnerLinks(Relationships relationships, const SheetNames& names);

/// Whether parts of this content type are text that may name sheets.
bool MayNameSheets(std::string_view type);
/// Whether the content type is that of VML, which need not be well-formed XML.
bool IsVml(std::string_view type);
/// The text of such a part, and the places where it names sheets.
PartText ReadText(const Package& package, std::string_view part);
std::vector<ReferenceSite> FindReferencesIn(const Package& package, const std::string& part);
/// The replacements in a part that the names of now make, the columns of a table included.
TextPatch RenameInPart(std::string_view text, const std::string& part, std::string_view type,
                       const std::vector<ReferenceSite>& sites, const SheetNames& sheets,
                       const TableNames& tables);

} // namespace orrery::xlsx
