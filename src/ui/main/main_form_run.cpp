#include "ui/main/main_form.h"
#include "util/paths.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <utility>

namespace orrery::ui {
namespace {

using generate::CalendarKind;

constexpr int kMonths = 12;

/// What users call the application.
std::string EngineTitle(const std::string& engine)
{
    if (engine == "excel")
        return "Excel";
    if (engine == "libreoffice")
        return "LibreOffice";
    return engine == "builtin" ? "the built-in engine" : engine;
}

/// The text of the status line after a run. When it is shortened in the middle, the names of both
/// files stay readable at the end.
std::string SavedText(const generate::SavedCalendar& saved, const std::string& engine, bool asPdf)
{
    if (saved.pdf)
        return "Saved by " + EngineTitle(engine) + " as " + saved.workbook + " and " +
               util::FileName(*saved.pdf);
    const std::string text = "Saved as " + saved.workbook + " by " + EngineTitle(engine);
    return asPdf ? text + ", but not as PDF" : text;
}

/// Shows a run in the main window. However it ends, hourglass and progress bar disappear. When an
/// application does not answer for a minute, the user can cancel the run.
class RunView : public generate::RunObserver, public book::Patience {
public:
    /// `cancel` is what the form's Cancel does during the run.
    RunView(MainForm& form, Desktop& desktop, const generate::GenerateRequest& request,
            std::function<void()>& cancel)
        : form_(form), desktop_(desktop), request_(request), cancel_(cancel)
    {
        cancel_ = [this] { Cancel(); };
    }
    ~RunView() override
    {
        cancel_ = nullptr;
        if (running_)
            End();
    }
    RunView(const RunView&) = delete;
    RunView& operator=(const RunView&) = delete;

    void Report(const std::string& text) override { desktop_.Report(text); }

    void Warn(const std::string& text) override { desktop_.ShowMessage(text); }

    void ShowProblem(const generate::RequestProblem& problem) override
    {
        desktop_.ShowMessage(problem.message);
        if (problem.field == generate::RequestField::Year)
            form_.SetFocus(form_.txtYear);
        else
            form_.SetFocus(form_.cboTemplateFile);
    }

    void SetHourglass(bool on) override
    {
        if (on)
            Begin();
        else
            End();
    }

    void MonthDone(CalendarKind kind, std::int16_t month) override
    {
        HideCancel();
        const bool isYearly = kind == CalendarKind::Yearly;
        form_.prgRun.done = isYearly ? kMonths + month : month;
        form_.lblStatus.ShowText("Writing " + file_ + (isYearly ? ": yearly" : ": monthly") +
                                 " calendar, month " + std::to_string(month) + " of " +
                                 std::to_string(kMonths));
        desktop_.Repaint(Painting::WhenDue);
    }

    void Saving() override
    {
        HideCancel();
        form_.prgRun.done = form_.prgRun.total;
        form_.lblStatus.ShowText("Saving " + file_);
        desktop_.Repaint(Painting::Now);
    }

    void Printing(const std::string& pdfPath) override
    {
        HideCancel();
        form_.lblStatus.ShowText("Making " + util::FileName(pdfPath));
        desktop_.Repaint(Painting::Now);
    }

    void OnWaiting(std::chrono::milliseconds time) noexcept override
    {
        constexpr auto kLong = std::chrono::minutes(1);
        if (time < kLong)
            return;
        if (!form_.cmdCancel.visible) {
            form_.cmdCancel.visible = true;
            form_.prgRun.visible = false; // leaves room for the sentence
            form_.SetFocus(form_.cmdCancel);
            form_.lblStatus.ShowText("The spreadsheet program has not answered for a minute.");
        }
        desktop_.LetPress(form_.cmdCancel);
    }

private:
    void Cancel()
    {
        form_.cmdCancel.enabled = false;
        GiveUp();
    }

    /// The application has answered.
    void HideCancel()
    {
        if (!form_.cmdCancel.visible)
            return;
        form_.cmdCancel.visible = false;
        form_.cmdCancel.enabled = true;
        form_.prgRun.visible = true;
        form_.SetFocus(form_.cmdGenerate);
    }

    /// Called after the request has passed its checks.
    void Begin()
    {
        running_ = true;
        const auto job = generate::CheckRequest(request_);
        file_ = util::FileName(std::get<generate::GenerateJob>(job).outputPath);
        form_.prgRun.done = 0;
        form_.prgRun.total = 2 * kMonths;
        form_.prgRun.visible = true;
        form_.cmdOpenFolder.visible = false;
        form_.lblStatus.ShowText("Writing " + file_);
        desktop_.SetHourglass(true);
        desktop_.Repaint(Painting::Now);
    }

    void End()
    {
        running_ = false;
        HideCancel();
        form_.prgRun.visible = false;
        form_.lblStatus.ShowText(file_ + " was not finished.");
        desktop_.SetHourglass(false);
    }

    MainForm& form_;
    Desktop& desktop_;
    const generate::GenerateRequest& request_;
    std::function<void()>& cancel_;
    std::string file_; ///< the workbook's name
    bool running_ = false;
};

} // namespace

void MainForm::cmdCancel_Click()
{
    if (cancelRun_)
        cancelRun_();
}

void MainForm::cmdGenerate_Click()
{
    const generate::GenerateRequest request{txtYear.text, SelectedTemplate(),
                                            settings_.TemplatePath, settings_.OutputPath};
    RunView view(*this, desktop_, request, cancelRun_);
    generate::Context context{settings_.names, view};
    const auto open = [this](const std::filesystem::path& workbook) {
        desktop_.Open(util::FromPath(workbook));
    };
    std::string engine;
    const auto start = [&](const generate::GenerateJob& job) {
        engine = engines_.Resolve(settings_.Engine);
        return engines_.Start(engine, {open, generate::FilesOf(job), &view});
    };
    const bool asPdf = chkPdf.visible && chkPdf.checked;
    generate::PdfMaker pdfMaker(engines_, book::PdfBy::Any, &view);
    auto saved =
        generate::RunGenerate(request, working.sets, start, context, asPdf ? &pdfMaker : nullptr);
    if (!saved)
        return;
    lblStatus.ShowText(SavedText(*saved, engine, asPdf));
    cmdOpenFolder.visible = true;
    savedPath_ = std::move(saved->workbook);
}

} // namespace orrery::ui
