#pragma once

#include "engines/builtin/common/range_index.h"
#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/formula/references.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/sheet/sheet_elements.h"
#include "engines/builtin/xlsx/sheet/sheet_identities.h"
#include "engines/builtin/xlsx/sheet/sheet_index.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::RangeIndex;
using builtin::TextPatch;

/// A sheet's text with the places of its rows, cells and formulas, and the sheet's properties that
/// concern cells. Read once, never changed; the model and its copies share it.
class SheetText {
public:
    /// The formats of columns without cells of their own. [ISO/IEC 29500-1] 18.3.1.13
    struct ColumnFormat {
        std::int32_t first = 0;
        std::int32_t last = 0;
        std::size_t format = 0;
    };

    /// Takes any kind of sheet; only worksheets have cells.
    /// Throws Error(DamagedWorkbook, TooDeeplyNested, TooLargeUnpacked).
    SheetText(PartText xml, std::string partName);

    const std::string& Xml() const { return *xml_; }
    const std::string& PartName() const { return partName_; }
    /// Where the part refers to sheets and tables.
    const std::vector<ReferenceSite>& References() const { return references_; }
    /// What a copy must have otherwise.
    const SheetIdentities& Identities() const { return identities_; }
    /// What the formulas of the cells read.
    const FormulaFacts& Facts() const { return index_.facts; }
    bool HasFormulas() const { return index_.hasFormulas; }

    /// The name of the sheet's module of the macros.
    const std::string& CodeName() const { return codeName_; }
    /// The replacement that gives a copy a code name of its own, or takes it away.
    TextPatch SetCodeName(const std::optional<std::string>& name) const;
    /// The replacements that select the sheet, or deselect it, in every view.
    TextPatch SelectTab(bool selected) const;

    bool HasCells() const { return sheetData_.has_value(); }
    const SheetIndex& Index() const { return index_; }
    /// The start tag of sheetData. The sheet has cells.
    const StartTag& SheetData() const { return *sheetData_; }
    /// Offset of the end tag of sheetData; after the start tag if the element is empty.
    std::size_t SheetDataEnd() const { return sheetDataEnd_; }
    /// The value of the dimension's ref attribute.
    const std::optional<xml::TextRange>& Dimension() const { return dimension_; }

    /// The format of a cell, also of one without an element.
    std::size_t FormatOf(CellAddress cell) const;
    /// The format that the column gives to cells without a format of their own.
    std::size_t FormatOfColumn(std::int32_t column) const;
    /// The format that a row element gives to such cells; nothing if it gives none.
    static std::optional<std::size_t> FormatOfRow(const StartTag& row);

    /// Whether the cell is in a merged area and not its first cell.
    bool IsHiddenByMerge(CellAddress cell) const;
    /// Whether the cell can only be changed together with others, as part of an array formula or a
    /// data table.
    bool IsPartOfArray(CellAddress cell) const { return fixedArrays_.Find(cell) != nullptr; }
    /// Whether the sheet is protected at that cell, so that the cell must not be written if it is
    /// locked.
    bool IsProtected(CellAddress cell) const;

private:
    void ReadPart(xml::Scanner& scanner);
    void ReadProperties(xml::Scanner& scanner);
    void ReadViews(xml::Scanner& scanner);
    void ReadColumns(xml::Scanner& scanner);
    void ReadSheetData(xml::Scanner& scanner);
    void CollectArrays();

    PartText xml_;
    std::string partName_;
    std::vector<ReferenceSite> references_;
    SheetIdentities identities_;
    SheetIndex index_;
    std::optional<StartTag> sheetData_;
    std::size_t sheetDataEnd_ = 0;
    std::optional<xml::TextRange> dimension_;
    std::string codeName_;
    std::optional<xml::TextRange> codeNamePlace_; // of the attribute with the blank before it
    std::vector<StartTag> views_;
    std::vector<ColumnFormat> columns_; // by first column
    RangeIndex merges_;
    RangeIndex fixedArrays_;
    bool isProtected_ = false;
    RangeIndex editableRanges_; // editable although the sheet is protected
};

} // namespace orrery::xlsx
