#pragma once

#include "engines/builtin/xlsx/declarations.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/shape_ids.h"
#include "engines/builtin/xlsx/sheet/sheet_identities.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orrery::xlsx {

/// The "sheetId" of a copied sheet and of its model.
struct SheetIds {
    std::uint32_t model = 0;
    std::uint32_t copy = 0;
};

/// The names and ids of a copied sheet that differ from its model's, by the model's.
struct CopyIdentity {
    SheetIds sheet;
    std::uint32_t number = 0;                  ///< of the copy, from 1; its GUIDs derive from it
    std::map<std::string, std::string> tables; ///< display names
    std::map<std::string, std::uint32_t> tableIds;      ///< by the model's display name
    std::map<std::uint32_t, std::uint32_t> newTableIds; ///< the same by the model's id
    std::map<std::string, std::string> slicers;         ///< slicers and timelines
    std::map<std::string, std::string> names;           ///< of the workbook, as formulas use them
    std::map<std::string, std::string> bindings;        ///< of add-ins to ranges of the sheet
    std::map<std::string, ShapeBlocks> drawings;        ///< of VML drawings, by PartKey
    ShapeBlocks shapes; ///< of the one with the sheet's controls and objects
};

inline constexpr std::size_t kGuidLength = 38; ///< braces included
/// Whether a text is a GUID in braces.
bool IsGuid(std::string_view text);
/// What a copy has instead of an id of its model, the same in every run: another GUID for a GUID,
/// in whichever case it is written; other ids get the copy's number.
std::string OwnId(std::string_view id, std::uint32_t copy);

/// The names and ids that must be unique in a workbook; copied parts get new ones.
class Identities {
public:
    /// Collects those of the package's parts and the given defined names. Parts that cannot be read
    /// are ignored. The package outlives this object.
    Identities(const Package& package, const std::vector<std::string>& definedNames);

    /// New ones for everything that a sheet and the parts that it owns declare. Throws Error as
    /// `Package` does if one cannot be read; no name is taken then.
    CopyIdentity ForCopy(const std::string& sheet, const std::vector<std::string>& ownedParts,
                         const SheetIdentities& identities = {}, SheetIds ids = {});

private:
    bool IsName(const std::string& name) const;
    std::string FreeName(const std::string& name);
    std::string FreeChartName(const std::string& name);
    std::string FreeNumber(const std::string& prefix, unsigned first);
    void GiveNames(const std::vector<Declaration>& declared, CopyIdentity& identity);
    void FindShapeBlocksOfAll();
    std::uint32_t FreeShapeBlock();
    void GiveShapeBlocks(const std::vector<std::string>& ownedParts, CopyIdentity& identity);

    const Package& package_;
    /// Names of tables, slicers and the workbook, by FoldCase.
    std::unordered_set<std::string> taken_;
    std::unordered_map<std::string, unsigned> numbers_; // the next number to try for such a name
    std::uint32_t lastTableId_ = 0;
    std::uint32_t copies_ = 0;
    /// Those of each VML drawing, by its PartKey; read when a sheet with such a drawing is copied.
    std::optional<std::map<std::string, std::set<std::uint32_t>>> shapeBlocks_;
    std::set<std::uint32_t> takenShapeBlocks_; // of all of them
    std::uint32_t nextShapeBlock_ = 1;         // no block below it is free
};

} // namespace orrery::xlsx
