#pragma once

#include "util/error.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What the generation needs from a spreadsheet application, named after Excel's object model. Text
/// is UTF-8. Every operation throws Error if it fails.
namespace orrery::book {

/// A cell receives a whole number or a text, never a date or a formula.
using CellValue = std::variant<std::int16_t, std::string>;

/// How a cell is written: through the default member of the indexed cell or through its `Value`
/// property. The effect is the same; only an application that is controlled through its object
/// model sees a difference.
enum class CellMember { Default, Value };

/// A sheet of an open workbook, which owns it until it is closed.
class Worksheet {
public:
    virtual ~Worksheet() = default;
    virtual std::string Name() const = 0;
    /// Renames the sheet; if the name breaks the rules of sheet names, the old one stays.
    virtual void SetName(std::string_view name) = 0;
    /// Copies this sheet and places the copy directly after the given one.
    virtual void CopyAfter(Worksheet& after) = 0;
    /// The sheet that follows in the workbook's order, or nullptr after the last.
    virtual Worksheet* Next() = 0;
    /// Replaces the value of a cell and keeps its format. Row and column are counted from 1.
    virtual void SetCell(std::int32_t row, std::int32_t column, const CellValue& value,
                         CellMember member) = 0;
};

/// How `SaveAs` treats shared access.
enum class AccessMode : std::int16_t { NoChange = 1 };

/// An open workbook. The application owns it.
class Workbook {
public:
    virtual ~Workbook() = default;
    /// The worksheet with that name, ignoring case, or nullptr.
    virtual Worksheet* FindWorksheet(std::string_view name) = 0;
    /// Writes the whole file in the workbook's own format; an existing target stays untouched
    /// until the new one is complete.
    virtual void SaveAs(const std::filesystem::path& target, AccessMode accessMode) = 0;
    /// What the file that was saved last lacks, although saving it did not fail. For the user.
    virtual std::vector<util::Error> Losses() const { return {}; }
};

/// One instance of the application.
class Application {
public:
    virtual ~Application() = default;
    virtual void SetDisplayAlerts(bool on) = 0;
    virtual void SetVisible(bool on) = 0;
    virtual bool Visible() const = 0;
    virtual void SetInteractive(bool on) = 0;
    virtual void SetScreenUpdating(bool on) = 0;
    /// Opens a workbook; with `readOnly` the file itself is never changed. The reference is valid
    /// until `ReleaseWorkbook` is called or the application ends.
    virtual Workbook& OpenWorkbook(const std::filesystem::path& path, bool readOnly) = 0;
    /// Gives up the reference to the workbook, which stays open in the application.
    virtual void ReleaseWorkbook(Workbook& workbook) = 0;
    /// Ends the application. While alerts are off, unsaved workbooks are discarded without asking.
    virtual void Quit() = 0;
};

} // namespace orrery::book
