#include "app/today.h"
#include "cli/commands.h"
#include "generate/trial_run.h"
#include "holidays/files/holiday_readers.h"
#include "holidays/language/rule_set.h"
#include "model/parameter_file.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace orrery::cli {
namespace {

/// The year of the command line, by default this one.
std::string YearOf(const Session& session)
{
    const auto& years = session.line.years;
    return years.empty() ? std::to_string(app::LocalMonth(session.console.now).year)
                         : years.front();
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
        session.engines.Start(ChooseEngine(session, chosen.settings),
                              {{}, {util::ToPath(path)}, session.console.patience}));
    application->SetDisplayAlerts(false);
    book::Workbook& workbook = application->OpenWorkbook(util::ToPath(path), true);
    return generate::TextsOf(
        generate::TryCalendars(workbook, year, chosen.sets, chosen.settings.names).findings);
}

void AddLineProblems(const std::string& file, const std::vector<holidays::LineProblem>& problems,
                     std::vector<std::string>& findings)
{
    for (const holidays::LineProblem& problem : problems)
        findings.push_back(util::FileName(file) + ", line " + std::to_string(problem.line) + ": " +
                           util::ErrorText(problem.error));
}

/// Says so if the calendar is to show the days of a region that its holidays do not know.
void AddRegionProblem(std::string_view calendar, const model::CalendarParameters& parameters,
                      std::vector<std::string>& findings)
{
    const std::string& region = parameters.ShownHolidays.region;
    if (!parameters.Output || region.empty() ||
        holidays::HasRegion(holidays::RulesOf(parameters.Holidays), region))
        return;
    findings.push_back(std::string(calendar) + " calendar: The holidays know no region " + region +
                       ". It gets the days of the whole country.");
}

/// Says which rules of a holiday file name regions that its list does not have.
void AddUnlistedRegions(const std::string& file, const holidays::RuleSet& rules,
                        std::vector<std::string>& findings)
{
    for (const holidays::RuleSet* const part : holidays::FilesOf(rules)) {
        for (const holidays::Rule& rule : part->rules) {
            if (const auto region = holidays::UnlistedRegionOf(rule, *part))
                findings.push_back(util::FileName(file) + ", line " + std::to_string(rule.line) +
                                   ": the region " + *region +
                                   " is not in the line \"# Regions:\".");
        }
    }
}

} // namespace

std::vector<std::string> FindFileProblems(const ChosenTemplate& chosen)
{
    std::vector<std::string> findings;
    AddRegionProblem("Monthly", chosen.sets.Monthly, findings);
    AddRegionProblem("Yearly", chosen.sets.Yearly, findings);
    if (chosen.hasParameterFile) {
        const auto file = model::ParameterFilePath(chosen.settings.TemplatePath, chosen.file);
        AddLineProblems(file, chosen.problems, findings);
        return findings;
    }
    for (const Error& error : chosen.settings.holidayFileErrors)
        findings.push_back("Holidays: " + util::ErrorText(error));
    const model::DefaultParameters& defaults = chosen.settings.defaults;
    for (const std::string& file :
         std::set{defaults.MonthlyHolidayFile, defaults.YearlyHolidayFile}) {
        holidays::HolidayList list;
        AddLineProblems(file, holidays::ReadHolidayFile(util::ToPath(file), list), findings);
    }
    return findings;
}

namespace {

/// Checks the lines of a holiday file.
bool CheckHolidayFile(Session& session)
{
    const std::string file = FindHolidayFile(session, session.line.templateName);
    const auto content = holidays::LoadHolidayFile(util::ToPath(file));
    std::vector<std::string> findings;
    AddLineProblems(file, content.problems, findings);
    AddUnlistedRegions(file, content.rules, findings);
    if (session.line.json) {
        JsonWriter json;
        json.BeginObject().Key("file").Text(file).Key("findings").Texts(findings).EndObject();
        PrintJson(session, json);
        return findings.empty();
    }
    for (const std::string& finding : findings)
        session.console.out << finding << '\n';
    const std::size_t rules = content.rules.rules.size();
    if (findings.empty())
        session.console.out << util::FileName(file) << ": every line is understood; " << rules
                            << (rules == 1 ? " rule.\n" : " rules.\n");
    return findings.empty();
}

} // namespace

bool RunCheckCommand(Session& session)
{
    if (util::ToLowerAscii(session.line.templateName).ends_with(".txt"))
        return CheckHolidayFile(session);
    const auto year = ReadYearArgument(session, YearOf(session));
    if (!year)
        return false;
    const ChosenTemplate chosen = ChooseTemplate(session);
    auto findings = FindProblems(session, chosen, *year);
    std::ranges::move(FindFileProblems(chosen), std::back_inserter(findings));
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
