#pragma once

#include "engines/builtin/xls/formula/formula_map.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orrery::xls {

/// A sheet of the workbook as it is saved.
struct SavedSheet {
    std::string Name;
    std::size_t Origin = 0; ///< position of the template's sheet that it is or was copied from
    bool IsCopy = false;
};

/// The position of each sheet of the template among the saved ones.
std::vector<std::size_t> PositionsOfOriginals(const std::vector<SavedSheet>& sheets);

/// The lists that formulas refer to by index, for the sheets as they are saved. Existing entries
/// keep their index; those that copies need are added at the end. References to the model in a
/// copy's formulas become references to the copy. The names of a sheet are repeated for its copies,
/// and a name of the workbook that refers to the model is repeated on each copy, but not if the
/// model has a name of its own that is the same, and not for macros.
class References {
public:
    /// Both must outlive this object.
    References(const Globals& globals, const std::vector<SavedSheet>& sheets);

    /// Whether indexes change in the formulas of the sheet at a position; only in copies they do.
    bool ChangeAt(std::size_t position) const;
    /// How they change.
    FormulaMap MapFor(std::size_t position) const;
    /// The EXTERNSHEET record with its continuation; empty if the workbook has none.
    std::string ExternSheet() const;
    /// The records of the added names, which go after the existing ones.
    std::string AddedNames() const;
    /// The position, from 1, of a name's own sheet in the saved workbook; 0 for a name of the
    /// workbook.
    std::uint16_t ScopeOf(const NameEntry& name) const;

private:
    void AddLinks();
    void AddNames();
    std::vector<std::size_t> NamesToRepeat(std::size_t origin) const;
    void RepeatNames(const std::vector<std::size_t>& names, std::size_t position);
    bool RefersTo(const NameEntry& name, std::size_t origin) const;
    std::uint16_t LinkAt(std::size_t position, std::uint16_t link) const;
    std::uint32_t NameAt(std::size_t position, std::uint32_t name) const;
    std::int16_t Moved(std::int16_t sheet) const;

    struct AddedName {
        std::size_t name;     // index in the template's list
        std::size_t position; // of the sheet that owns it
    };

    const Globals& globals_;
    const std::vector<SavedSheet>& sheets_;
    std::vector<std::size_t> positions_;
    std::vector<std::size_t> addedLinks_;             // positions of the copies they refer to
    std::map<std::size_t, std::uint16_t> linkOfCopy_; // by position
    std::vector<AddedName> addedNames_;
    std::map<std::pair<std::size_t, std::size_t>, std::uint32_t> addedNameIndex_; // position, name
};

} // namespace orrery::xls
