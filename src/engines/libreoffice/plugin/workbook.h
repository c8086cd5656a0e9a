#pragma once

#include "book/spreadsheet.h"
#include "engines/libreoffice/plugin/office.h"
#include "engines/libreoffice/plugin/sheets.h"

#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/frame/XModel2.hpp>

#include <filesystem>
#include <string>

namespace orrery::libreoffice {

/// What all documents of an instance have in common.
struct Switches {
    bool visible = false;
    bool interactive = true;
    bool screenUpdating = true;
};

/// A workbook that is open in LibreOffice.
class Workbook : public book::Workbook {
public:
    /// Opens it without showing it. Throws Error (FileNotFound, NotAWorkbook, ...).
    Workbook(Office& office, const std::filesystem::path& path, const Switches& switches,
             const StructureReader& hasProtectedStructure);
    ~Workbook() override = default;
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    book::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

    /// Makes its window as the switches say. Only a saved workbook becomes visible, as the file
    /// that it was saved to; worksheets handed out before are invalid then.
    void Show(const Switches& switches);
    /// Whether the user has a window of it.
    bool IsSeen() const { return isSeen_; }
    /// Closes it without saving changes.
    void Discard() noexcept { office_.Discard(model_); }

private:
    void Adopt();
    void OpenSaved();

    Office& office_;
    Sheets sheets_;
    Reference<css::frame::XModel2> model_;
    Reference<css::awt::XWindow> window_;
    std::string filter_;
    bool isLocked_ = false; // whether its controllers are locked
    bool isForUser_ = false;
    bool isSeen_ = false;
    std::filesystem::path saved_;
};

} // namespace orrery::libreoffice
