#include "engines/builtin/xlsx/look/cells/cell_formulas.h"

#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/look/cells/element_text.h"
#include "engines/builtin/xlsx/look/cells/limits.h"
#include "engines/builtin/xlsx/look/style/attributes.h"

#include <algorithm>

namespace orrery::xlsx {

std::int32_t CellFormulas::Read(xml::Scanner& scanner, book::CellAddress cell)
{
    const auto type = scanner.Attribute("t");
    if (type && type->raw == "shared") {
        if (const auto group = IndexAttribute(scanner, "si"))
            return ReadShared(scanner, cell, *group);
    }
    if (type && type->raw == "dataTable") {
        context_.leftOut.Add("data table", FormatCellAddress(cell), "its formulas are not known");
        scanner.SkipElement();
        return -1;
    }
    std::optional<book::CellRange> array;
    if (type && type->raw == "array")
        array = ParseCellRange(scanner.AttributeText("ref").value_or(""))
                    .value_or(book::CellRange{cell, cell});
    return Add(ReadText(scanner, cell), array);
}

std::string CellFormulas::ReadText(xml::Scanner& scanner, book::CellAddress cell)
{
    bool isTooLong = false;
    std::string text = ReadFormulaText(scanner, &isTooLong);
    if (isTooLong)
        context_.leftOut.Add("formula", FormatCellAddress(cell), "it is too long");
    return text;
}

std::int32_t CellFormulas::ReadShared(xml::Scanner& scanner, book::CellAddress cell,
                                      std::size_t group)
{
    std::string text = ReadText(scanner, cell);
    const auto known = shared_.find(group);
    if (!text.empty()) {
        if (known == shared_.end() && shared_.size() < kMaxRules)
            shared_.emplace(group, Shared{text, cell});
        return Add(std::move(text));
    }
    if (known != shared_.end())
        return Move(known->second, cell);
    waiting_.emplace_back(cell, group);
    return -1;
}

std::int32_t CellFormulas::Move(const Shared& shared, book::CellAddress cell)
{
    if (bytes_ + shared.text.size() > context_.limits.formulaBytes)
        return Add(shared.text); // tells that it is left out
    return Add(
        MoveFormula(shared.text, cell.row - shared.cell.row, cell.column - shared.cell.column));
}

std::int32_t CellFormulas::Add(std::string text, std::optional<book::CellRange> array)
{
    if (text.empty())
        return -1;
    if (bytes_ + text.size() > context_.limits.formulaBytes) {
        context_.leftOut.Add("formulas", "", "the sheet has too many of them");
        return -1;
    }
    bytes_ += text.size();
    std::vector<book::CellFormula>& formulas = context_.look.formulas;
    formulas.push_back({std::move(text), array});
    return static_cast<std::int32_t>(formulas.size()) - 1;
}

void CellFormulas::Finish(std::vector<book::Cell>& cells)
{
    for (const auto& [address, group] : waiting_) {
        const auto shared = shared_.find(group);
        const auto cell = std::lower_bound(
            cells.begin(), cells.end(), address,
            [](const book::Cell& one, book::CellAddress wanted) { return one.address < wanted; });
        if (shared != shared_.end() && cell != cells.end() && cell->address == address &&
            cell->formula < 0)
            cell->formula = Move(shared->second, address);
    }
    waiting_.clear();
}

} // namespace orrery::xlsx
