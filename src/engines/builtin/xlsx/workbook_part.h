#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/defined_names.h"
#include "engines/builtin/xlsx/document_titles.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/saved_sheet.h"
#include "engines/common/sheet_names.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// A sheet as the workbook part lists it.
struct SheetEntry {
    std::string Name;
    std::uint32_t SheetId = 0;
    std::string RelationshipId;        ///< empty if it is missing
    std::string relationshipAttribute; ///< the name of that attribute, prefix included
    std::size_t begin = 0;             ///< of the <sheet> element in the part's text
    std::size_t end = 0;
};

/// The workbook part: its sheets, defined names, views and calculation settings. Read once;
/// written as the original text with replacements.
class WorkbookPart {
public:
    /// Throws Error(DamagedWorkbook).
    WorkbookPart(PartText xml, std::string partName);

    const std::vector<SheetEntry>& Sheets() const { return sheets_; }
    const std::vector<NameEntry>& Names() const { return names_; }
    /// Position, from 0, of the sheet shown when the workbook is opened.
    std::size_t ActiveSheet() const { return activeSheet_; }
    bool IsStructureProtected() const { return structureProtected_; }

    /// The text for the sheets as they are saved:
    /// - <sheets>: names, order, the copies' own entries (state and other attributes of the model);
    /// - defined names: formulas use the new names and `localSheetId` the new order; a sheet's own
    /// names are repeated for each copy, referring to the copy; a workbook name that refers to a
    /// model gets a name of the same kind on each copy (unless the model has one of its own); old
    /// names keep their order, new ones follow their originals;
    /// - lists of slicers' caches: those of a copy after its model's;
    /// - views: activeTab and firstSheet use the new order; custom views refer to sheets by id and
    /// stay;
    /// - calcPr: fullCalcOnLoad="1" if `recalculate`.
    /// `sheets` contains every sheet of the template once, in its order, with copies between them.
    /// `namesFor(position)` and `tablesFor(position)` give the names as seen from the sheet at a
    /// position of `sheets`, `workbookNames` and `workbookTables` those seen from the workbook.
    std::string ToXml(const std::vector<SavedSheet>& sheets, bool recalculate,
                      const SheetNames& workbookNames, const TableNames& workbookTables,
                      const std::function<SheetNames(std::size_t)>& namesFor,
                      const std::function<TableNames(std::size_t)>& tablesFor) const;

private:
    class Reader;
    /// An element of a list that leads to a part of the workbook: the cache of a slicer.
    struct ListEntry {
        std::string relationshipId;
        std::string relationshipAttribute; ///< the name of that attribute, prefix included
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void PatchSheets(TextPatch& patch, const std::vector<SavedSheet>& sheets) const;
    std::string CopiedEntry(const SheetEntry& entry, const SavedSheet& copy) const;
    void PatchLists(TextPatch& patch, const std::vector<SavedSheet>& sheets) const;
    void PatchViews(TextPatch& patch, const std::vector<SavedSheet>& sheets) const;
    void PatchCalculation(TextPatch& patch) const;

    PartText xml_;
    std::string partName_;
    std::vector<SheetEntry> sheets_;
    std::vector<NameEntry> names_;
    std::vector<ListEntry> lists_;
    std::vector<std::size_t> views_;        // where each <workbookView> begins
    std::vector<std::size_t> calculations_; // where each <calcPr> begins
    std::size_t calculationPlace_ = 0;      // where a missing <calcPr> belongs
    std::string prefix_;                    // of the main namespace, ":" included
    std::size_t activeSheet_ = 0;
    bool structureProtected_ = false;
};

} // namespace orrery::xlsx
