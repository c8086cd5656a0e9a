#pragma once

#include "book/spreadsheet.h"
#include "engines/libreoffice/plugin/office.h"
#include "engines/libreoffice/plugin/workbook.h"

#include <memory>
#include <vector>

namespace orrery::libreoffice {

/// Its own instance. Once a saved workbook is made visible, and there is a display to show it on,
/// it belongs to the user and goes on running; otherwise it ends with this object.
class OfficeApplication : public book::Application {
public:
    explicit OfficeApplication(const StartOptions& options);
    ~OfficeApplication() override;
    OfficeApplication(const OfficeApplication&) = delete;
    OfficeApplication& operator=(const OfficeApplication&) = delete;

    /// Documents are loaded in a way that asks no questions.
    void SetDisplayAlerts(bool /*on*/) override {}
    void SetVisible(bool on) override;
    bool Visible() const override { return switches_.visible; }
    void SetInteractive(bool on) override;
    void SetScreenUpdating(bool on) override;
    book::Workbook& OpenWorkbook(const std::filesystem::path& path, bool readOnly) override;
    void ReleaseWorkbook(book::Workbook& workbook) override;
    void Quit() override;

private:
    void Switch(bool Switches::*which, bool on);
    /// Whether there is a window that the user can close.
    bool IsSeen() const;

    Switches switches_;
    bool hasDisplay_;
    StructureReader hasProtectedStructure_;
    bool belongsToUser_ = false; // a workbook was left open for the user
    Office office_;
    std::vector<std::unique_ptr<Workbook>> workbooks_;
};

} // namespace orrery::libreoffice
