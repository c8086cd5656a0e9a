#pragma once

#include "book/look/cell.h"
#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orrery::xlsx {

/// The formulas of a sheet's cells. Shared ones are written out for each cell.
class CellFormulas {
public:
    explicit CellFormulas(SheetContext& context) : context_(context) {}

    /// Reads the <f> of a cell to its end. The index of its formula; -1 if it has none, or none
    /// yet: its shared formula may stand further down.
    std::int32_t Read(xml::Scanner& scanner, book::CellAddress cell);
    /// Gives the cells their formulas that stood before the shared ones they belong to. `cells` is
    /// sorted.
    void Finish(std::vector<book::Cell>& cells);

private:
    struct Shared {
        std::string text;
        book::CellAddress cell;
    };
    std::int32_t ReadShared(xml::Scanner& scanner, book::CellAddress cell, std::size_t group);
    std::string ReadText(xml::Scanner& scanner, book::CellAddress cell);
    std::int32_t Move(const Shared& shared, book::CellAddress cell);
    std::int32_t Add(std::string text, std::optional<book::CellRange> array = {});

    SheetContext& context_;
    std::size_t bytes_ = 0; ///< of all formulas
    std::unordered_map<std::size_t, Shared> shared_;
    std::vector<std::pair<book::CellAddress, std::size_t>> waiting_;
};

} // namespace orrery::xlsx
