#pragma once

#include "book/look/workbook_view.h"
#include "look/conditions/sheet_conditions.h"
#include "look/evaluate/evaluator.h"
#include "look/number_format/number_format.h"
#include "look/values/cell_display.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace orrery::look {

/// What the cells of one sheet show: values computed, formatted, and styled by tables and
/// conditional formats.
class SheetDisplay : public CellSource {
public:
    /// Both outlive the object.
    SheetDisplay(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator);

    CellDisplay Display(book::CellAddress address) override;
    /// The cells asked for so far whose formulas cannot be computed, row by row.
    const std::set<book::CellAddress>& NotComputed() const { return notComputed_; }
    /// A value as a format code shows it.
    FormattedValue Format(const book::CellContent& content, const std::string& code);

private:
    const SharedStyle& StyleOf(std::uint32_t index);
    book::CellContent ValueOf(const book::Cell& cell, CellDisplay& display);
    void ShowFormula(const book::Cell& cell, CellDisplay& display) const;
    void ShowValue(const book::CellContent& content, const book::Cell* cell, CellDisplay& display);
    void ShowRuns(const std::string& text, const std::vector<book::TextRun>& runs,
                  CellDisplay& display) const;
    /// Gives what they set of the style.
    book::PartialStyle ApplyConditions(book::CellAddress cell, CellDisplay& display);
    const NumberFormat& NumberFormatOf(const std::string& code);

    book::WorkbookView& view_;
    std::size_t sheet_;
    const book::SheetLook& look_;
    Evaluator& evaluator_;
    SheetConditions conditions_;
    std::unordered_map<std::string, NumberFormat> formats_;
    std::unordered_map<std::uint32_t, SharedStyle> styles_; ///< of the cells so far
    std::set<book::CellAddress> notComputed_;
};

} // namespace orrery::look
