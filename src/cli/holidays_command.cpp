#include "cli/commands.h"
#include "cli/error.h"

#include "exchange/ics/ics_writer.h"
#include "holidays/files/holiday_readers.h"
#include "holidays/language/evaluation.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <ostream>
#include <system_error>
#include <utility>
#include <vector>

namespace orrery::cli {
namespace {

/// "2027-03-28".
std::string IsoDate(holidays::Date date)
{
    const std::chrono::year_month_day parts(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(parts.year()),
                  static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return text.data();
}

/// Easter Sunday of a year; reports a year for which it cannot be computed.
std::optional<holidays::Date> EasterOf(Session& session, std::int16_t year)
{
    try {
        return holidays::EasterDate(year);
    }
    catch (const util::OverflowError&) {
        ReportYearOverflow(session, std::to_string(year));
        return std::nullopt;
    }
}

/// A file of the command line with its holidays.
struct HolidaySource {
    std::string file;
    holidays::HolidayFile content;
};

/// A holiday with the line of the file that it comes from.
struct SourcedHoliday {
    holidays::Holiday holiday;
    const std::string* file = nullptr;
    std::size_t line = 0; ///< counted from 1
};

std::vector<HolidaySource> ReadSources(Session& session)
{
    std::vector<HolidaySource> sources;
    for (const std::string& name : session.line.holidayFiles) {
        HolidaySource& source = sources.emplace_back();
        source.file = FindHolidayFile(session, name);
        const auto path = util::ToPath(source.file);
        const auto calendar = session.line.section == "yearly" ? holidays::CalendarKind::Yearly
                                                               : holidays::CalendarKind::Monthly;
        source.content = session.line.section.empty()
                             ? holidays::LoadHolidayFile(path)
                             : holidays::LoadTemplateHolidays(calendar, path);
    }
    return sources;
}

holidays::HolidayChoice ChoiceOf(const CommandLine& line)
{
    holidays::HolidayChoice choice;
    choice.region = util::ToUpperAscii(line.region);
    choice.language = util::ToLowerAscii(line.language);
    if (line.allKinds)
        choice.categories = holidays::AllCategories();
    return choice;
}

/// Throws Error (NoSuchRegion) if none of the files has the chosen region.
void CheckRegion(const std::string& region, const std::vector<HolidaySource>& sources)
{
    std::vector<std::string> codes;
    for (const HolidaySource& source : sources) {
        for (const holidays::Region& known : holidays::RegionsOf(source.content.rules))
            codes.push_back(known.code);
    }
    if (region.empty() || std::find(codes.begin(), codes.end(), region) != codes.end())
        return;
    throw util::Error(ErrorKind::NoSuchRegion, region,
                      codes.empty() ? "" : "They know " + util::Join(codes, ", "));
}

/// Whether the command is asked for more than the dates of plain rules.
bool IsDetailed(const CommandLine& line, const std::vector<HolidaySource>& sources)
{
    const bool hasExtras =
        std::any_of(sources.begin(), sources.end(), [](const HolidaySource& source) {
            return !source.content.list.Extras().empty();
        });
    return hasExtras || line.allKinds || !line.region.empty() || !line.language.empty() ||
           line.years.size() > 1 || sources.size() > 1;
}

/// The dates of plain rules, as a calendar gets them.
std::vector<SourcedHoliday> PlainHolidays(const HolidaySource& source, std::int16_t year,
                                          holidays::Date easter)
{
    holidays::HolidayDateList dates;
    holidays::ComputeHolidayDates(year, source.content.list, easter, dates);
    std::vector<SourcedHoliday> found;
    for (std::int16_t i = 0; i < dates.Count; ++i) {
        if (dates.DateAt(i) != holidays::kNoDate)
            found.push_back({{dates.DateAt(i), dates.NameAt(i)}, &source.file, 0});
    }
    return found;
}

std::vector<SourcedHoliday> AllHolidays(const std::vector<HolidaySource>& sources,
                                        std::int16_t year, const holidays::HolidayChoice& choice)
{
    std::vector<SourcedHoliday> found;
    for (const HolidaySource& source : sources) {
        const holidays::RuleSet& rules = source.content.rules;
        for (holidays::Holiday& day : holidays::HolidaysOf(rules, year, choice)) {
            const std::size_t line = holidays::RuleAt(rules, day.rule).line;
            found.push_back({std::move(day), &source.file, line});
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.holiday.date < b.holiday.date; });
    return found;
}

void WriteDetails(const SourcedHoliday& day, JsonWriter& json)
{
    json.Key("kind").Text(std::string(holidays::WordOf(day.holiday.category)));
    json.Key("rule").BeginObject().Key("file").Text(*day.file);
    json.Key("line").Number(static_cast<std::int64_t>(day.line)).EndObject();
    json.Key("substitute").Boolean(day.holiday.isSubstitute);
    json.Key("estimated").Boolean(day.holiday.isEstimated);
}

/// Throws Error (WouldReplaceHolidays) if the calendar would replace one of the files.
void CheckIcsPath(const std::string& file, const std::vector<HolidaySource>& sources)
{
    const auto path = util::ToPath(util::AbsolutePath(file));
    std::error_code ignored; // what does not exist is no holiday file
    for (const HolidaySource& source : sources) {
        if (std::filesystem::equivalent(path, util::ToPath(source.file), ignored))
            throw util::Error(ErrorKind::WouldReplaceHolidays, file);
    }
}

/// "Germany, Austria (BY)".
std::string CalendarName(const std::vector<HolidaySource>& sources, const std::string& region)
{
    std::string name;
    for (const HolidaySource& source : sources)
        name += (name.empty() ? "" : ", ") + util::BaseName(util::FileName(source.file));
    return region.empty() ? name : name + " (" + region + ')';
}

void AddIcsHolidays(const std::vector<SourcedHoliday>& days,
                    std::vector<exchange::IcsHoliday>& holidays)
{
    for (const SourcedHoliday& day : days)
        holidays.push_back(
            {day.holiday.date, day.holiday.name, util::FileName(*day.file), day.holiday.category});
}

void SaveIcs(Session& session, const std::string& text)
{
    const std::string& path = session.line.icsFile;
    if (path == kStandardOutput)
        session.console.out << text;
    else
        util::ReplaceFile(util::ToPath(util::AbsolutePath(path)), text);
}

void WriteYear(Session& session, std::int16_t year, const std::vector<SourcedHoliday>& days,
               JsonWriter& json)
{
    json.BeginObject().Key("year").Number(year).Key("holidays").BeginArray();
    for (const SourcedHoliday& day : days) {
        const std::string date = IsoDate(day.holiday.date);
        json.BeginObject().Key("date").Text(date).Key("name").Text(day.holiday.name);
        if (day.line > 0)
            WriteDetails(day, json);
        json.EndObject();
        if (!session.line.json && session.line.icsFile.empty())
            session.console.out << date << '\t' << day.holiday.name << '\n';
    }
    json.EndArray().EndObject();
}

} // namespace

std::string FindHolidayFile(Session& session, std::string file)
{
    if (!IsPath(file)) {
        const app::Settings settings = LoadSettings(session, session.line.templateFolder);
        const std::string& folder =
            session.line.section.empty() ? settings.HolidayFilePath : settings.TemplatePath;
        if (!util::IsMissing(util::ToPath(folder + file)) || !util::FileExists(file))
            file = folder + file;
    }
    if (const auto error = util::FindTextReadError(util::ToPath(file)))
        throw Error(*error);
    return file;
}

void RunHolidaysCommand(Session& session)
{
    std::vector<std::pair<std::int16_t, holidays::Date>> years; // with Easter Sunday
    for (const std::string& text : session.line.years) {
        const auto year = ReadYearArgument(session, text);
        if (const auto easter = year ? EasterOf(session, *year) : std::nullopt)
            years.emplace_back(*year, *easter);
    }
    if (years.empty())
        return;
    const std::vector<HolidaySource> sources = ReadSources(session);
    const bool isDetailed = IsDetailed(session.line, sources);
    const holidays::HolidayChoice choice = ChoiceOf(session.line);
    CheckRegion(choice.region, sources);
    const std::string& icsFile = session.line.icsFile;
    if (!icsFile.empty() && icsFile != kStandardOutput)
        CheckIcsPath(icsFile, sources);
    const bool isRange = session.line.years.size() > 1;
    std::vector<exchange::IcsHoliday> icsHolidays;
    JsonWriter json;
    if (isRange)
        json.BeginObject().Key("years").BeginArray();
    for (const auto& [year, easter] : years) {
        const auto days = isDetailed ? AllHolidays(sources, year, choice)
                                     : PlainHolidays(sources.front(), year, easter);
        WriteYear(session, year, days, json);
        if (!icsFile.empty())
            AddIcsHolidays(days, icsHolidays);
    }
    if (!icsFile.empty())
        SaveIcs(session, exchange::IcsText(CalendarName(sources, choice.region), icsHolidays));
    if (isRange)
        json.EndArray().Key("reports").Texts(session.reporter.Reports()).EndObject();
    if (session.line.json)
        PrintJson(session, json);
}

void RunEasterCommand(Session& session)
{
    JsonWriter json;
    json.BeginObject().Key("easter").BeginArray();
    for (const std::string& text : session.line.years) {
        const auto year = ReadYearArgument(session, text);
        const auto easter = year ? EasterOf(session, *year) : std::nullopt;
        if (!easter)
            continue;
        const std::string date = IsoDate(*easter);
        json.BeginObject().Key("year").Number(*year).Key("date").Text(date).EndObject();
        if (!session.line.json)
            session.console.out << date << '\n';
    }
    json.EndArray().Key("reports").Texts(session.reporter.Reports()).EndObject();
    if (session.line.json)
        PrintJson(session, json);
}

} // namespace orrery::cli
