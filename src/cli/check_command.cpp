#include "cli/commands.h"
#include "generate/trial_run.h"
#include "util/error_text.h"
#include "util/paths.h"

#include <chrono>
#include <ostream>

namespace orrery::cli {
namespace {

std::string ThisYear()
{
    const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
    return std::to_string(static_cast<int>(std::chrono::year_month_day(today).year()));
}

/// Ends the application at the end of the scope.
class ScopedApplication {
public:
    explicit ScopedApplication(std::unique_ptr<book::Application> application)
        : application_(std::move(application))
    {
    }
    ~ScopedApplication()
    {
        try {
            application_->Quit();
        }
        catch (...) {
            // The check is done or has already failed; another error would change nothing.
        }
    }
    ScopedApplication(const ScopedApplication&) = delete;
    ScopedApplication& operator=(const ScopedApplication&) = delete;

    book::Application* operator->() { return application_.get(); }

private:
    std::unique_ptr<book::Application> application_;
};

std::vector<std::string> FindProblems(Session& session, const ChosenTemplate& chosen,
                                      std::int16_t year)
{
    const std::string path = chosen.settings.TemplatePath + chosen.file;
    ScopedApplication application(
        session.engines.Start(ChooseEngine(session, chosen.settings), {}));
    application->SetDisplayAlerts(false);
    book::Workbook& workbook = application->OpenWorkbook(util::ToPath(path), true);
    return generate::TryCalendars(workbook, year, chosen.sets, chosen.settings.names);
}

/// The holiday files matter only if the template has no holidays of its own.
void AddHolidayProblems(const ChosenTemplate& chosen, std::vector<std::string>& findings)
{
    if (chosen.hasParameterFile)
        return;
    for (const Error& error : chosen.settings.holidayFileErrors)
        findings.push_back("Holidays: " + util::ErrorText(error));
}

} // namespace

bool RunCheckCommand(Session& session)
{
    const auto year = ReadYearArgument(
        session, session.line.years.empty() ? ThisYear() : session.line.years.front());
    if (!year)
        return false;
    const ChosenTemplate chosen = ChooseTemplate(session);
    auto findings = FindProblems(session, chosen, *year);
    AddHolidayProblems(chosen, findings);
    if (session.line.json) {
        JsonWriter json;
        json.BeginObject().Key("template").Text(chosen.settings.TemplatePath + chosen.file);
        json.Key("year").Number(*year).Key("findings").Texts(findings).EndObject();
        PrintJson(session, json);
        return findings.empty();
    }
    for (const std::string& finding : findings)
        session.console.out << finding << '\n';
    if (findings.empty())
        session.console.out << chosen.file << ": every sheet is there and every cell of " << *year
                            << " lies inside it.\n";
    return findings.empty();
}

} // namespace orrery::cli
