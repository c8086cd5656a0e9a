#pragma once

#include "book/spreadsheet.h"
#include "engines/excel/call_watch.h"
#include "engines/excel/dispatch.h"
#include "engines/excel/message_filter.h"
#include "engines/excel/process.h"
#include "engines/excel/start_options.h"
#include "engines/excel/waiting.h"
#include "engines/excel/workbook.h"

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace orrery::excel {

/// A running instance of the application.
struct Instance {
    Pointer<IDispatch> application;
    std::optional<Process> process; ///< nothing if it could not be found
    /// Lets its windows come to the front, which the system allows only to the program that the
    /// user works with and to those that it names. May be empty.
    std::function<void()> allowForeground = {};
};

/// A separate instance. Once made visible it belongs to the user and goes on running; otherwise its
/// process ends with this object, whatever happened to it. Windows may open a workbook that the
/// user double-clicks in the instance: then it is made visible instead of ended, without the
/// workbooks that were opened here.
class ExcelApplication : public book::Application {
public:
    /// Returns the instance; called when COM is ready. Its errors are passed on.
    using Starter = std::function<Instance()>;

    ExcelApplication(const Starter& start, std::unique_ptr<Clock> clock, StartOptions options = {});
    ~ExcelApplication() override;
    ExcelApplication(const ExcelApplication&) = delete;
    ExcelApplication& operator=(const ExcelApplication&) = delete;

    void SetDisplayAlerts(bool on) override;
    void SetVisible(bool on) override;
    bool Visible() const override;
    void SetInteractive(bool on) override { Switch("Interactive", on); }
    void SetScreenUpdating(bool on) override { Switch("ScreenUpdating", on); }
    Workbook& OpenWorkbook(const std::filesystem::path& path, bool readOnly) override;
    void ReleaseWorkbook(book::Workbook& workbook) override;
    void Quit() override;

private:
    void Switch(std::string_view property, bool on) const;
    /// Whether its user has something in it: workbooks that were not opened here, or a window, such
    /// as that of a file in Protected View, which is no workbook yet.
    bool IsShared();
    /// Leaves a shared instance to its user; else returns false. Every step is tried; throws the
    /// first failure at the end.
    bool LeaveIfShared();
    /// Leaves the instance to its user or ends it; its failures are not thrown.
    void LeaveOrEnd();
    /// Ends the process unless it belongs to the user. False if it goes on. On any thread.
    bool EndProcess();
    /// Whether the call in progress is to be cancelled.
    bool OnMessage();

    // In this order: the last ones are released first.
    Apartment apartment_;
    MessageFilter filter_{[this] { return OnMessage(); }};
    std::unique_ptr<Clock> clock_;
    const OpeningCheck checkBeforeOpening_;
    ObjectModel model_;
    std::optional<Process> process_;
    std::function<void()> allowForeground_;
    std::optional<CallWatch> watch_;
    std::optional<Object> application_;
    std::vector<std::unique_ptr<Workbook>> workbooks_;
    std::atomic<bool> belongsToUser_ = false;
    bool areAlertsOn_ = true;
    bool hasQuit_ = false;
};

} // namespace orrery::excel
