#pragma once

#include "book/date_system.h"
#include "book/look/sheet_look.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::book {

enum class SheetKind : std::uint8_t { Worksheet, ChartSheet, MacroSheet, Dialog };
enum class SheetState : std::uint8_t { Visible, Hidden, VeryHidden };

struct SheetSummary {
    std::string name;
    SheetKind kind = SheetKind::Worksheet;
    SheetState state = SheetState::Visible;
};

struct DefinedName {
    std::string name;
    std::optional<std::size_t>
        sheet;           ///< index of the sheet that it belongs to; absent: the workbook's
    std::string formula; ///< without "="
};

/// What the sheets of a workbook have in common.
struct WorkbookLook {
    std::vector<SheetSummary> sheets; ///< in the workbook's order
    std::vector<DefinedName> names;
    DateSystem dateSystem = DateSystem::From1900;
    Font normalFont; ///< of the style "Normal", whose digits are the unit of column widths
    std::size_t activeSheet = 0;
};

/// A cell of a workbook.
struct CellOfSheet {
    std::size_t sheet = 0; ///< its index
    CellAddress cell;
    friend auto operator<=>(const CellOfSheet&, const CellOfSheet&) = default;
};

/// A workbook that is looked at.
class WorkbookView {
public:
    virtual ~WorkbookView() = default;
    virtual const WorkbookLook& Workbook() const = 0;
    /// The look of a sheet, read when it is first asked for; valid as long as the view. A sheet
    /// that is no worksheet has an empty look. Throws Error (DamagedWorkbook, TooLargeUnpacked).
    virtual const SheetLook& Sheet(std::size_t index) = 0;
    /// The index of the sheet with that name, ignoring case.
    std::optional<std::size_t> FindSheet(std::string_view name) const;
    /// The index of the sheet that formulas of the sheet `from` mean by a name.
    virtual std::optional<std::size_t> ReferencedSheet(std::string_view name,
                                                       std::size_t /*from*/) const
    {
        return FindSheet(name);
    }
    /// The cells that differ from the file's: stored results of formulas that read them, directly
    /// or not, are out of date.
    virtual std::vector<CellOfSheet> WrittenCells() const { return {}; }
    /// Closes the file until something of it is asked for, so that other programs can replace it;
    /// `Sheet` then throws FileNotReadable if one did.
    virtual void CloseFile() {}
};

} // namespace orrery::book
