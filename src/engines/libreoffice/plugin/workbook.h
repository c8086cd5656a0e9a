#pragma once

#include "engines/common/cell_address.h"
#include "engines/libreoffice/plugin/office.h"
#include "engines/libreoffice/plugin/worksheet.h"
#include "generate/spreadsheet.h"

#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>

#include <memory>
#include <vector>

namespace orrery::libreoffice {

/// What the documents of an instance have in common.
struct Switches {
    bool visible = false;
    bool interactive = true;
    bool screenUpdating = true;
};

/// A workbook that is open in LibreOffice.
class Workbook : public generate::Workbook {
public:
    /// Opens it out of sight. Throws Error (FileNotFound, NotAWorkbook, ...).
    Workbook(Office& office, const std::filesystem::path& path, const Switches& switches);
    ~Workbook() override = default;
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    generate::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, generate::AccessMode accessMode) override;

    /// Makes its window what the switches say. What becomes visible is the file that it was saved
    /// to, not before; the sheets that were given out are gone then.
    void Show(const Switches& switches);
    /// Whether the user has a window of it.
    bool IsSeen() const { return isSeen_; }
    /// Closes it, whatever became of its changes.
    void Discard() noexcept { office_.Discard(model_); }

    // For its sheets.
    Office& Instance() const { return office_; }
    const Reference<css::frame::XModel2>& Document() const { return model_; }
    const Reference<css::sheet::XSpreadsheets>& Sheets() const { return sheets_; }
    std::vector<std::string> SheetNames() const;
    Worksheet& SheetOf(const std::string& name);
    /// Throws Error(StructureProtected) for that sheet.
    void CheckStructure(const std::string& sheet) const;
    /// All cells that a sheet of the file's format has.
    engines::CellRange Whole() const
    {
        return {{1, 1},
                isBinary_ ? engines::CellAddress{65536, 256}
                          : engines::CellAddress{1048576, 16384}};
    }

private:
    void Adopt();
    void OpenSaved();

    Office& office_;
    Reference<css::frame::XModel2> model_;
    Reference<css::sheet::XSpreadsheets> sheets_;
    Reference<css::awt::XWindow> window_;
    std::string filter_;
    bool isBinary_ = false;
    bool isLocked_ = false; // its controllers
    bool isForUser_ = false;
    bool isSeen_ = false;
    std::filesystem::path saved_;
    std::vector<std::unique_ptr<Worksheet>> known_;
};

} // namespace orrery::libreoffice
