#include "engines/excel/excel_application.h"

#include <algorithm>
#include <cstdint>
#include <exception>

namespace orrery::excel {
namespace {

/// How long an application that quits has to end.
constexpr std::chrono::milliseconds kQuitTimeout = std::chrono::seconds(10);

/// Macros of workbooks that are opened in its lifetime do not run, and no window asks about them.
class MacrosOff {
public:
    explicit MacrosOff(const Object& application) : application_(application)
    {
        constexpr std::int32_t forceDisable = 3;
        Set(forceDisable);
    }
    ~MacrosOff()
    {
        constexpr std::int32_t low = 1; // what the application begins with when it is driven
        try {
            Set(low);
        }
        catch (...) {
            // An application that is gone says so at the next call.
        }
    }
    MacrosOff(const MacrosOff&) = delete;
    MacrosOff& operator=(const MacrosOff&) = delete;

private:
    void Set(std::int32_t security) { application_.Put("AutomationSecurity", Variant(security)); }

    const Object& application_;
};

} // namespace

ExcelApplication::ExcelApplication(const Starter& start, std::unique_ptr<Clock> clock,
                                   StartOptions options)
    : clock_(std::move(clock)), checkBeforeOpening_(std::move(options.checkBeforeOpening)),
      model_(*clock_)
{
    Instance instance = start();
    if (instance.process)
        process_.emplace(std::move(*instance.process));
    allowForeground_ = std::move(instance.allowForeground);
    application_.emplace(std::move(instance.application), model_.application);
    if (options.patience != nullptr) {
        watch_.emplace(*options.patience, [this] { return EndProcess(); });
        model_.connection.WatchBy(*watch_);
    }
}

ExcelApplication::~ExcelApplication()
{
    // An application that does not answer would not answer the release of its objects either.
    if (!hasQuit_)
        LeaveOrEnd();
    workbooks_.clear();
    application_.reset();
    if (!belongsToUser_ && hasQuit_ && process_ && !process_->WaitForEnd(kQuitTimeout))
        EndProcess();
}

void ExcelApplication::SetDisplayAlerts(bool on)
{
    Switch("DisplayAlerts", on);
    areAlertsOn_ = on;
}

void ExcelApplication::SetVisible(bool on)
{
    if (on && allowForeground_)
        allowForeground_();
    Switch("Visible", on);
    belongsToUser_ = on;
}

bool ExcelApplication::Visible() const
{
    return application_->Get("Visible").AsBool();
}

Workbook& ExcelApplication::OpenWorkbook(const std::filesystem::path& path, bool readOnly)
{
    if (checkBeforeOpening_)
        checkBeforeOpening_(path);
    const Object books = ObjectFrom(application_->Get("Workbooks"), model_.workbooks);
    const MacrosOff macrosOff(*application_);
    // File name, update of links, read-only.
    Variant book = books.Call(
        "Open", {Variant(std::string_view(PathText(path))), Variant::Omitted(), Variant(readOnly)});
    workbooks_.push_back(
        std::make_unique<Workbook>(ObjectFrom(std::move(book), model_.workbook), model_));
    return *workbooks_.back();
}

void ExcelApplication::ReleaseWorkbook(book::Workbook& workbook)
{
    std::erase_if(workbooks_, [&](const auto& open) { return open.get() == &workbook; });
}

void ExcelApplication::Quit()
{
    if (LeaveIfShared())
        return;
    application_->Call("Quit");
    hasQuit_ = true;
    workbooks_.clear();
}

bool ExcelApplication::IsShared()
{
    const Object books = ObjectFrom(application_->Get("Workbooks"), model_.workbooks);
    return books.Get("Count").AsNumber() > static_cast<std::int32_t>(workbooks_.size()) ||
           (process_ && process_->IsShown());
}

bool ExcelApplication::LeaveIfShared()
{
    if (!IsShared())
        return false;
    belongsToUser_ = true; // even if a step fails
    std::exception_ptr failure;
    const auto attempt = [&failure](const auto& step) {
        try {
            step();
        }
        catch (const Error&) {
            if (!failure)
                failure = std::current_exception();
        }
    };
    attempt([this] { SetInteractive(true); });
    attempt([this] { SetScreenUpdating(true); });
    attempt([this] { SetVisible(true); });
    for (const auto& workbook : workbooks_)
        attempt([&workbook] { workbook->Close(); });
    workbooks_.clear();
    attempt([this] { SetDisplayAlerts(true); });
    if (failure)
        std::rethrow_exception(failure);
    return true;
}

void ExcelApplication::LeaveOrEnd()
{
    try {
        model_.connection.AskAgain();
        if (belongsToUser_ && !areAlertsOn_)
            SetDisplayAlerts(true); // else its user would lose what is not saved
        else if (!belongsToUser_ && !LeaveIfShared() && !EndProcess())
            application_->Call("Quit"); // nobody knows its process
    }
    catch (const Error&) { // it does not answer
        EndProcess();
    }
}

void ExcelApplication::Switch(std::string_view property, bool on) const
{
    application_->Put(property, Variant(on));
}

bool ExcelApplication::EndProcess()
{
    return !belongsToUser_ && process_ && process_->EndUnlessShown();
}

bool ExcelApplication::OnMessage()
{
    if (!watch_)
        return false;
    watch_->Tick();
    return watch_->IsToBeCancelled();
}

} // namespace orrery::excel
