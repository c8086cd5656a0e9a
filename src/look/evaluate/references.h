#pragma once

#include "book/look/workbook_view.h"
#include "look/evaluate/formula/tree.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace orrery::formula {

/// Where a formula stands, and for which cell it is written: its relative references move with it.
struct Place {
    std::size_t sheet = 0;
    book::CellAddress cell{1, 1};
    book::CellAddress writtenFor{1, 1};
};

/// Finds what references and names of formulas stand for.
class References {
public:
    explicit References(book::WorkbookView& view) : view_(view) {}

    /// The sheet that a formula on the sheet `from` means by a name.
    std::optional<std::size_t> FindSheet(const std::string& name, std::size_t from);
    /// Nothing for a sheet that is not there: "#REF!".
    std::optional<Area> AreaOf(const AreaText& text, const Place& place);
    /// The sheet's own name before the workbook's; nullptr if there is none.
    const book::DefinedName* FindName(const NameText& wanted, std::size_t ownSheet);
    /// The cells of a table, or the error for what it does not have.
    std::variant<Area, CellError> AreaOfTable(const TableText& text, const Place& place);
    /// "R1C1", "R[-1]C[2]:R5C", with a sheet before it or without.
    std::optional<Area> ReadRowColumn(std::string_view text, const Place& place);
    /// The whole data of a table, for its name alone.
    bool IsTable(const std::string& name);

private:
    struct FoundTable {
        std::size_t sheet = 0;
        const book::Table* table = nullptr;
    };
    std::optional<FoundTable> FindTable(const std::string& name, const Place& place);

    book::WorkbookView& view_;
    std::map<std::pair<std::string, std::size_t>, std::optional<std::size_t>> sheets_;
    std::map<std::string, std::optional<FoundTable>> tables_;
    std::map<std::string, std::vector<std::size_t>> names_; ///< positions, by the folded name
    std::size_t indexedNames_ = 0;
};

/// The common cells of areas; nothing if there are none.
std::optional<Area> Intersect(const Area& left, const Area& right);
/// The rectangle around two areas of one sheet; nothing if they are of several.
std::optional<Area> Enclose(const Area& left, const Area& right);

} // namespace orrery::formula
