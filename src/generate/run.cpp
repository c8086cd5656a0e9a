#include "generate/run.h"

#include "generate/calendar_sheets.h"
#include "holidays/holiday_dates.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/numbers.h"
#include "util/paths.h"

#include <cerrno>
#include <exception>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace orrery::generate {
namespace {

using util::ErrorKind;

void RemoveFile(const std::string& path)
{
    std::error_code failure;
    std::filesystem::remove(util::ToPath(path), failure);
    if (failure)
        throw Error(ErrorKind::FileNotWritable, path, failure.message());
}

void RemoveFileIfPossible(const std::string& path)
{
    std::error_code ignored;
    std::filesystem::remove(util::ToPath(path), ignored);
}

void CreateEmptyFile(const std::string& path)
{
    errno = 0;
    const std::ofstream file(util::ToPath(path), std::ios::binary | std::ios::trunc);
    if (!file)
        throw Error(ErrorKind::FileNotWritable, path, std::generic_category().message(errno));
}

void SwitchOff(Application& application)
{
    application.SetDisplayAlerts(false);
    application.SetVisible(false);
    application.SetInteractive(false);
    application.SetScreenUpdating(false);
}

void SwitchOn(Application& application)
{
    application.SetInteractive(true);
    application.SetScreenUpdating(true);
    application.SetVisible(true);
    application.SetDisplayAlerts(true);
}

/// Proves that the output can be written before any work is done.
void PrepareOutput(const std::string& outputPath)
{
    if (util::FileExists(outputPath))
        RemoveFile(outputPath);
    const std::string folder = util::ParentFolder(outputPath);
    if (!folder.empty())
        util::EnsureFolder(folder);
    CreateEmptyFile(outputPath);
}

/// An output file without content is nothing that anybody can open.
Workbook& OpenTemplate(Application& application, const GenerateJob& job)
{
    try {
        return application.OpenWorkbook(util::ToPath(job.templatePath), true);
    }
    catch (...) {
        RemoveFileIfPossible(job.outputPath);
        throw;
    }
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

std::optional<std::string> RunGenerate(const GenerateRequest& request, model::ParameterSets& sets,
                                       const ApplicationFactory& startApplication, Context& context,
                                       GenerateView& view)
{
    bool hourglass = false;
    std::optional<std::string> saved;
    try {
        const auto checked = CheckRequest(request);
        if (const auto* problem = std::get_if<RequestProblem>(&checked)) {
            view.ShowProblem(*problem);
            return std::nullopt;
        }
        const auto& job = std::get<GenerateJob>(checked);
        context.easter = holidays::EasterDate(job.year);
        view.SetHourglass(true);
        hourglass = true;
        if (GenerateCalendar(startApplication, job, sets, context))
            saved = job.outputPath;
    }
    catch (const util::OverflowError&) { // of the year's text or of its Easter Sunday
        context.reporter.Report(util::ErrorText(Error(ErrorKind::Overflow, request.yearText)));
    }
    catch (const std::exception& error) {
        context.reporter.Report(util::ErrorText(error));
    }
    if (hourglass)
        view.SetHourglass(false);
    return saved;
}

bool GenerateCalendar(const ApplicationFactory& startApplication, const GenerateJob& job,
                      model::ParameterSets& sets, Context& context)
{
    const std::unique_ptr<Application> application = startApplication();
    SwitchOff(*application);
    bool saved = false;
    if (Workbook* const workbook = OpenCalendarWorkbook(*application, job, context)) {
        MakeMonthlyCalendar(*workbook, job.year, sets.Monthly, context);
        MakeYearlyCalendar(*workbook, job.year, sets.Yearly, context);
        if (context.saving)
            context.saving();
        saved = SaveCalendar(*workbook, job.outputPath, context);
        if (saved) {
            SwitchOn(*application);
            application->ReleaseWorkbook(*workbook);
        }
    }
    if (!application->Visible())
        application->Quit();
    return saved;
}

Workbook* OpenCalendarWorkbook(Application& application, const GenerateJob& job, Context& context)
{
    try {
        PrepareOutput(job.outputPath);
        return &OpenTemplate(application, job);
    }
    catch (const std::exception& error) {
        context.reporter.Report("Failed to open the calendar file \"" + job.outputPath + "\".\r\n" +
                                util::ErrorText(error));
        return nullptr;
    }
}

bool SaveCalendar(Workbook& workbook, const std::string& outputPath, Context& context)
{
    RemoveFileIfPossible(outputPath); // normally the empty one
    try {
        workbook.SaveAs(util::ToPath(outputPath), AccessMode::NoChange);
        return true;
    }
    catch (const std::exception& error) {
        context.reporter.Report("Failed to save the calendar file.\r\n" + util::ErrorText(error));
        return false;
    }
}

} // namespace orrery::generate
