#pragma once

#include "engines/builtin/xlsx/copy_plan.h"
#include "engines/builtin/xlsx/formula/references.h"
#include "engines/builtin/xlsx/identities.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/package/package_edit.h"
#include "engines/builtin/xlsx/slicer_caches.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xlsx {

/// The current names of sheets and tables as seen from one sheet.
struct NamesOfOwner {
    SheetNames sheets;
    TableNames tables;
};

/// A part of the workbook that a copy needs for itself.
struct CopiedOfWorkbook {
    std::string relationshipId; ///< of the workbook part to the model's part
    std::string part;           ///< the copy's
};

/// A copy of a sheet: the parts that it will have, and the names that are its own.
struct SheetCopy {
    std::size_t number = 0; ///< how many copies were made before it
    CopyPlan plan;
    CopyIdentity identity;
    std::vector<CopiedOfWorkbook> ofWorkbook;

    const std::string& Part() const { return plan.parts.front().copy; }
};

/// Copies sheets of a package: the sheet's part and every part that it owns (drawings, charts,
/// comments, tables, controls, printer settings ...). Pictures and what belongs to the workbook
/// (pivot caches, persons) are shared, except caches of slicers that filter the copied sheet.
class SheetCopier {
public:
    using Content = PackageEdit::Content;
    /// The limits to which copies may grow a workbook: the parts that a zip container can list
    /// without its 64-bit extension, and the unpacked bytes that are read.
    static constexpr std::size_t kMaxParts = 65535;
    static constexpr std::uint64_t kMaxBytes = zip::kMaxUnpacked;

    /// The package outlives the copier.
    SheetCopier(const Package& package, const std::vector<std::string>& definedNames);

    /// Plans a copy of the template's sheet `model`, which has these identities. Every failure
    /// happens here: throws Error (DamagedWorkbook, TooDeeplyNested, TooLargeOutput). A sheet that
    /// once could not be copied cannot be copied later.
    std::shared_ptr<const SheetCopy>
    Copy(const std::string& model, const SheetIdentities& identities = {}, SheetIds ids = {});
    bool HasPart(const std::string& part) const;

    /// Puts the parts of a copy into a package to be saved. `content` makes the text of the copied
    /// sheet then. Copy and copier outlive the edit.
    void Put(PackageEdit& edit, const SheetCopy& copy, const Content& content,
             const std::shared_ptr<const NamesOfOwner>& names) const;

private:
    /// What changes in the copies of a part.
    struct Changes {
        std::vector<ReferenceSite> references;
        bool hasIdentity = false; ///< it has names or ids
    };

    std::shared_ptr<const SheetCopy> CopyOnce(const std::string& model,
                                              const SheetIdentities& identities, SheetIds ids);
    std::vector<SlicerCache> CachesOf(const std::vector<std::string>& ownedParts,
                                      std::uint32_t sheetId);
    void CheckLimits(const CopyPlan& plan) const;
    void FindChangesOf(const std::string& part);
    Content ContentOf(const std::string& part, const SheetCopy& copy,
                      const std::shared_ptr<const NamesOfOwner>& names) const;

    const Package& package_;
    Identities identities_;
    NewPartNames names_;
    std::optional<std::vector<SlicerCache>> caches_; // read when a sheet with slicers is copied
    std::size_t copies_ = 0;
    std::size_t parts_ = 0;                       // of the copies
    std::uint64_t bytes_ = 0;                     // of the copies, unpacked
    std::map<std::string, util::Error> refusals_; // by model
    std::map<std::string, Changes> changes_;      // by the PartKey of the original
};

} // namespace orrery::xlsx
