#pragma once

#include "engines/builtin/xlsx/look/cells/cell_reader.h"
#include "engines/builtin/xlsx/look/cells/sheet_context.h"
#include "engines/builtin/xml/reading.h"

#include <string>

namespace orrery::xlsx {

/// The look of a sheet of which only the rows are there.
class CellSheet {
public:
    explicit CellSheet(const std::string& rows, const std::string& sharedTexts = {},
                       const std::string& styles = {}, const CellLimits& limits = {})
        : styles_(builtin::ThemeColors(), "<styleSheet>" + styles + "</styleSheet>"),
          texts_("<sst>" + sharedTexts + "</sst>")
    {
        SheetContext context(styles_, texts_, book::DateSystem::From1900, look_);
        context.limits = limits;
        const std::string xml = "<sheetData>" + rows + "</sheetData>";
        xml::Scanner scanner(xml);
        xml::EnterRoot(scanner);
        CellReader(context).Read(scanner);
    }

    const book::SheetLook& Look() const { return look_; }
    const book::Cell* Find(std::int32_t row, std::int32_t column) const
    {
        return look_.FindCell({row, column});
    }
    /// What a cell shows or has; a cell that is missing has nothing.
    book::CellContent Content(std::int32_t row, std::int32_t column) const
    {
        const book::Cell* cell = Find(row, column);
        return cell == nullptr ? book::CellContent() : cell->content;
    }
    std::string Formula(std::int32_t row, std::int32_t column) const
    {
        const book::Cell* cell = Find(row, column);
        return cell == nullptr || cell->formula < 0
                   ? std::string()
                   : look_.formulas[static_cast<std::size_t>(cell->formula)].text;
    }

private:
    StyleSheet styles_;
    SharedTexts texts_;
    book::SheetLook look_;
};

} // namespace orrery::xlsx
