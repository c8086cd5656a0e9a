#pragma once

#include "book/look/workbook_view.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orrery::look {

/// A sheet that a run filled.
struct FilledSheet {
    std::string name;
    std::string model; ///< the template's sheet that it is, or that it is a copy of
    std::map<book::CellAddress, book::CellContent> cells; ///< numbers and texts
};

/// A template as a run would leave it: its sheets, copies of some of them, and what was written.
/// Cells keep their styles.
class FilledView : public book::WorkbookView {
public:
    /// The first of the filled sheets of a model takes the model's place, its copies follow it.
    /// Those whose model the template does not have are left out. `model` outlives the object.
    FilledView(book::WorkbookView& model, std::vector<FilledSheet> filled);

    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t index) override;
    /// A copy means itself by the name of its model; other sheets mean the first filled one.
    std::optional<std::size_t> ReferencedSheet(std::string_view name,
                                               std::size_t from) const override;
    std::vector<book::CellOfSheet> WrittenCells() const override;
    void CloseFile() override { model_.CloseFile(); }

private:
    struct Entry {
        std::size_t model = 0;               ///< index in the template
        const FilledSheet* filled = nullptr; ///< null: as the template has it
        std::optional<book::SheetLook> look; ///< of a filled one, once it was asked for
    };

    void ListSheets();
    void CopyLocalNames();
    book::SheetLook Fill(const Entry& entry);

    book::WorkbookView& model_;
    std::vector<FilledSheet> filled_;
    std::vector<Entry> entries_;
    book::WorkbookLook workbook_;
};

} // namespace orrery::look
