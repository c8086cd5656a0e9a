#include "generate/run.h"

#include "generate/calendar_sheets.h"
#include "generate/error.h"
#include "generate/failure.h"
#include "holidays/holiday_dates.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/file_replace.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/system_message.h"

#include <exception>
#include <filesystem>
#include <system_error>
#include <vector>

namespace orrery::generate {
namespace {

void RemoveFile(const std::string& path)
{
    std::error_code failure;
    std::filesystem::remove(util::ToPath(path), failure);
    if (failure)
        throw Error(util::ErrorKind::FileNotWritable, path, util::SystemMessage(failure));
}

void RemoveFileIfPossible(const std::string& path)
{
    std::error_code ignored;
    std::filesystem::remove(util::ToPath(path), ignored);
}

void HideApplication(book::Application& application)
{
    application.SetDisplayAlerts(false);
    application.SetVisible(false);
    application.SetInteractive(false);
    application.SetScreenUpdating(false);
}

void ShowApplication(book::Application& application)
{
    application.SetInteractive(true);
    application.SetScreenUpdating(true);
    application.SetVisible(true);
    application.SetDisplayAlerts(true);
}

/// If the template is a link to the output, removing the old output would lose both.
void CheckOutputIsNotTemplate(const GenerateJob& job)
{
    namespace fs = std::filesystem;
    const fs::path output = util::ToPath(job.outputPath);
    std::error_code absent;
    const fs::path place = fs::canonical(output.parent_path(), absent) / output.filename();
    if (absent || fs::is_symlink(output, absent))
        return;
    if (fs::canonical(util::ToPath(job.templatePath), absent) == place)
        throw Error(ErrorKind::OutputIsTemplate, job.outputPath);
}

/// Makes sure that the output can be written before any work is done. A link with the output's name
/// is removed like a file, so that nothing outside the output folder is touched.
void PrepareOutput(const GenerateJob& job)
{
    const std::string& outputPath = job.outputPath;
    const std::filesystem::path path = util::ToPath(outputPath);
    util::CheckReplaceable(path);
    CheckOutputIsNotTemplate(job);
    RemoveFile(outputPath);
    const std::string folder = util::ParentFolder(outputPath);
    if (!folder.empty())
        util::EnsureFolder(folder);
    util::CreateEmptyFile(path);
}

/// Removes an output file that was started but not saved.
class UnfinishedOutput {
public:
    UnfinishedOutput() = default;
    ~UnfinishedOutput()
    {
        if (!path_.empty())
            RemoveFileIfPossible(path_);
    }
    UnfinishedOutput(const UnfinishedOutput&) = delete;
    UnfinishedOutput& operator=(const UnfinishedOutput&) = delete;

    void Begin(const std::string& path) { path_ = path; }
    void Keep() { path_.clear(); }

private:
    std::string path_;
};

/// Opens the template. If that fails, removes the empty output file, which nobody could open.
book::Workbook& OpenTemplate(book::Application& application, const GenerateJob& job)
{
    try {
        return application.OpenWorkbook(util::ToPath(job.templatePath), true);
    }
    catch (...) {
        RemoveFileIfPossible(job.outputPath);
        throw;
    }
}

void WarnOfLosses(const book::Workbook& workbook, Context& context)
{
    for (const Error& loss : workbook.Losses())
        context.observer.Warn(util::ErrorText(loss));
}

/// The steps of a run between starting the application and releasing it.
void RunInApplication(book::Application& application, const GenerateJob& job,
                      model::ParameterSets& sets, Context& context, UnfinishedOutput& unfinished,
                      std::optional<SavedCalendar>& saved)
{
    HideApplication(application);
    if (book::Workbook* const workbook = OpenCalendarWorkbook(application, job, context)) {
        unfinished.Begin(job.outputPath);
        MakeMonthlyCalendar(*workbook, job.year, sets.Monthly, context);
        MakeYearlyCalendar(*workbook, job.year, sets.Yearly, context);
        context.observer.Saving();
        if (SaveCalendar(*workbook, job.outputPath, context)) {
            saved = SavedCalendar{job.outputPath, std::nullopt};
            unfinished.Keep();
            WarnOfLosses(*workbook, context);
            ShowApplication(application);
            application.ReleaseWorkbook(*workbook);
        }
    }
    if (!application.Visible())
        application.Quit();
}

/// Records the names of the sheets that runs fill, until it is destroyed.
class SheetNames {
public:
    explicit SheetNames(Context& context) : context_(context) { context.filledSheets = &names_; }
    ~SheetNames() { context_.filledSheets = nullptr; }
    SheetNames(const SheetNames&) = delete;
    SheetNames& operator=(const SheetNames&) = delete;

    const std::vector<std::string>& Names() const { return names_; }

private:
    Context& context_;
    std::vector<std::string> names_;
};

/// Makes the workbook and, with a PDF maker, its PDF.
void MakeFiles(const ApplicationFactory& startApplication, const GenerateJob& job,
               model::ParameterSets& sets, Context& context, PdfMaker* pdfMaker,
               std::optional<SavedCalendar>& saved)
{
    std::optional<SheetNames> sheets;
    if (pdfMaker != nullptr)
        sheets.emplace(context);
    GenerateCalendar(startApplication, job, sets, context, saved);
    if (saved && sheets)
        saved->pdf = pdfMaker->Make(job.outputPath, sheets->Names(), context);
}

} // namespace

std::optional<std::int16_t> ReadYear(std::string_view text)
{
    const auto number = util::ReadNumber(text);
    if (!number)
        return std::nullopt;
    const std::int16_t year = util::RoundTo16(*number);
    return year > 0 ? std::optional(year) : std::nullopt;
}

std::variant<GenerateJob, RequestProblem> CheckRequest(const GenerateRequest& request)
{
    const auto year = ReadYear(request.yearText);
    if (!year)
        return RequestProblem{RequestField::Year, kNoYearMessage};
    if (request.templateFile.empty())
        return RequestProblem{RequestField::Template, kNoTemplateMessage};
    return GenerateJob{*year, request.templateFolder + request.templateFile,
                       request.outputFolder + std::to_string(*year) + request.templateFile};
}

std::vector<std::filesystem::path> FilesOf(const GenerateJob& job)
{
    return {util::ToPath(job.templatePath), util::ToPath(job.outputPath)};
}

std::optional<SavedCalendar> RunGenerate(const GenerateRequest& request, model::ParameterSets& sets,
                                         const ApplicationFactory& startApplication,
                                         Context& context, PdfMaker* pdfMaker)
{
    bool hourglass = false;
    std::optional<SavedCalendar> saved;
    try {
        const auto checked = CheckRequest(request);
        if (const auto* problem = std::get_if<RequestProblem>(&checked)) {
            context.observer.ShowProblem(*problem);
            return std::nullopt;
        }
        const auto& job = std::get<GenerateJob>(checked);
        context.easter = holidays::EasterDate(job.year);
        context.observer.SetHourglass(true);
        hourglass = true;
        MakeFiles(startApplication, job, sets, context, pdfMaker, saved);
    }
    catch (const util::OverflowError&) { // from the year's text or its Easter Sunday
        context.observer.Report(
            util::ErrorText(Error(util::ErrorKind::Overflow, request.yearText)));
    }
    catch (const std::exception& error) {
        context.observer.Report(util::ErrorText(error));
    }
    if (hourglass)
        context.observer.SetHourglass(false);
    return saved;
}

void GenerateCalendar(const ApplicationFactory& startApplication, const GenerateJob& job,
                      model::ParameterSets& sets, Context& context,
                      std::optional<SavedCalendar>& saved)
{
    UnfinishedOutput unfinished; // removed last: the application may keep the file open
    const std::unique_ptr<book::Application> application = startApplication(job);
    try {
        RunInApplication(*application, job, sets, context, unfinished, saved);
    }
    catch (const RunEnded&) {
        // It is already reported.
    }
}

book::Workbook* OpenCalendarWorkbook(book::Application& application, const GenerateJob& job,
                                     Context& context)
{
    try {
        PrepareOutput(job);
        return &OpenTemplate(application, job);
    }
    catch (const std::exception& error) {
        ReportFailure("Failed to open the calendar file \"" + job.outputPath + "\".", error,
                      context);
        return nullptr;
    }
}

bool SaveCalendar(book::Workbook& workbook, const std::string& outputPath, Context& context)
{
    RemoveFileIfPossible(outputPath); // normally the empty file
    try {
        workbook.SaveAs(util::ToPath(outputPath), book::AccessMode::NoChange);
        return true;
    }
    catch (const std::exception& error) {
        ReportFailure("Failed to save the calendar file.", error, context);
        return false;
    }
}

} // namespace orrery::generate
