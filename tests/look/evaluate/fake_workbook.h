#pragma once

#include "book/look/workbook_view.h"

#include <algorithm>
#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace orrery::look {

/// A workbook in memory. Cells may be set in any order.
class FakeWorkbook : public book::WorkbookView {
public:
    explicit FakeWorkbook(std::vector<std::string> names = {"Sheet1"},
                          book::DateSystem dates = book::DateSystem::From1900)
    {
        workbook_.dateSystem = dates;
        for (std::string& name : names) {
            sheets_.emplace_back();
            sheets_.back().name = name;
            sheets_.back().styles.emplace_back();
            workbook_.sheets.push_back({std::move(name)});
        }
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t index) override
    {
        auto& cells = sheets_[index].cells;
        const auto isBefore = [](const book::Cell& left, const book::Cell& right) {
            return left.address < right.address;
        };
        if (!std::is_sorted(cells.begin(), cells.end(), isBefore))
            std::sort(cells.begin(), cells.end(), isBefore);
        return sheets_[index];
    }
    book::SheetLook& Look(std::size_t index = 0) { return sheets_[index]; }

    void Set(book::CellAddress address, book::CellContent content, std::size_t sheet = 0)
    {
        book::Cell cell;
        cell.address = address;
        cell.content = std::move(content);
        sheets_[sheet].cells.push_back(std::move(cell));
    }
    void SetFormula(book::CellAddress address, std::string text, book::CellContent stored = {},
                    std::size_t sheet = 0, std::optional<book::CellRange> array = std::nullopt)
    {
        Set(address, std::move(stored), sheet);
        auto& formulas = sheets_[sheet].formulas;
        sheets_[sheet].cells.back().formula = static_cast<std::int32_t>(formulas.size());
        formulas.push_back({std::move(text), array});
    }
    void Name(std::string name, std::string formula,
              std::optional<std::size_t> sheet = std::nullopt)
    {
        workbook_.names.push_back({std::move(name), sheet, std::move(formula)});
    }

private:
    book::WorkbookLook workbook_;
    std::deque<book::SheetLook> sheets_;
};

} // namespace orrery::look
