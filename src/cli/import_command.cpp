#include "app/import_source.h"
#include "app/own_holidays.h"
#include "app/today.h"
#include "cli/commands.h"
#include "cli/error.h"
#include "exchange/table/table_layout.h"
#include "util/error.h"
#include "util/file_read.h"
#include "util/numbers.h"
#include "util/paths.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace orrery::cli {
namespace {

using exchange::FoundTable;
using exchange::ImportedRules;

std::optional<exchange::Years> AskedYears(const CommandLine& line)
{
    if (line.years.empty())
        return std::nullopt;
    const auto number = [](const std::string& text) {
        return util::RoundTo32(util::ReadNumber(text).value_or(0));
    };
    return exchange::Years{number(line.years.front()), number(line.years.back())};
}

/// Throws Error (WrongUsage, AmbiguousDates) for a choice that the file has not or needs.
app::ImportChoices ChoicesOf(Session& session, const app::ImportSource& source)
{
    const CommandLine& line = session.line;
    app::ImportChoices choices;
    const int thisYear = app::LocalMonth(session.console.now).year;
    choices.years = AskedYears(line).value_or(app::TenYearsFrom(thisYear));
    choices.dateOrder = exchange::FindDateOrder(line.dateOrder);
    choices.section = line.section;
    const FoundTable* const table = source.Table();
    if (table != nullptr && table->orders.size() > 1 && !choices.dateOrder) {
        std::string orders;
        for (const exchange::DateOrder order : table->orders)
            orders += (orders.empty() ? "" : " or ") + std::string(WordOf(order)) + " (" +
                      std::string(InWords(order)) + ')';
        throw Error(ErrorKind::AmbiguousDates, line.importFile, orders);
    }
    return choices;
}

/// Where the holiday file goes. Throws Error(OutputExists) for one that is not to be replaced.
std::string TargetOf(Session& session)
{
    const CommandLine& line = session.line;
    std::string file;
    if (!line.outputFile.empty())
        file = util::AbsolutePath(line.outputFile);
    else {
        const app::Settings settings = LoadSettings(session, line.templateFolder);
        const std::string folder = app::OwnHolidayFolder(settings.HolidayFilePath);
        util::EnsureFolder(folder);
        file = folder + util::BaseName(util::AbsolutePath(line.importFile)) + ".txt";
    }
    if (!line.replace && !util::IsMissing(util::ToPath(file)))
        throw Error(ErrorKind::OutputExists, file);
    return file;
}

std::string Counted(std::size_t count, const std::string& one, const std::string& several)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

/// `"Date" (day, month, year)`.
std::string ColumnOf(const FoundTable& table, std::size_t column)
{
    return column < table.columns.size() ? '"' + table.columns[column] + '"' : "";
}

void PrintTable(std::ostream& out, const FoundTable& table, exchange::DateOrder order)
{
    const exchange::TableLayout& layout = table.layout;
    const std::string inOrder =
        table.orders.empty() ? "" : " (" + std::string(InWords(order)) + ')';
    if (table.columns.empty()) {
        out << "A date" << inOrder << " and a name in each line\n";
        return;
    }
    out << "Table, separator " << exchange::WordOfSeparator(layout.separator) << ": dates in "
        << ColumnOf(table, layout.dateColumn) << inOrder << ", names in "
        << ColumnOf(table, layout.nameColumn);
    if (layout.endColumn)
        out << ", last days in " << ColumnOf(table, *layout.endColumn);
    for (const std::string& column : table.ignored)
        out << (&column == &table.ignored.front() ? "; ignored: \"" : ", \"") << column << '"';
    out << '\n';
}

void PrintRules(std::ostream& out, const ImportedRules& rules)
{
    out << Counted(rules.rules, "rule", "rules") << ", "
        << Counted(rules.datedDays, "dated day", "dated days");
    if (rules.duplicates > 0)
        out << ", " << Counted(rules.duplicates, "duplicate", "duplicates");
    if (rules.outside > 0)
        out << ", " << Counted(rules.outside, "event", "events") << " without a day in the years";
    const std::size_t lines = rules.passedOver.size();
    if (lines > 0)
        out << "; " << Counted(lines, "line is", "lines are") << " passed over:";
    out << '\n';
    for (const exchange::PassedOver& line : rules.passedOver)
        out << "Line " << line.line << ": " << line.reason << '\n';
}

void WriteTable(JsonWriter& json, const FoundTable& table, exchange::DateOrder order)
{
    const exchange::TableLayout& layout = table.layout;
    const auto column = [&](std::size_t index) {
        if (index < table.columns.size())
            json.Text(table.columns[index]);
        else
            json.Null();
    };
    json.Key("table").BeginObject();
    json.Key("separator").Text(exchange::WordOfSeparator(layout.separator));
    json.Key("header").Boolean(layout.hasHeader);
    json.Key("dateOrder");
    if (table.orders.empty())
        json.Null();
    else
        json.Text(WordOf(order));
    json.Key("dateColumn");
    column(layout.dateColumn);
    json.Key("nameColumn");
    column(layout.nameColumn);
    json.Key("endColumn");
    column(layout.endColumn.value_or(table.columns.size()));
    json.Key("ignored").Texts(table.ignored).EndObject();
}

/// `file` is empty if none was written.
JsonWriter ImportJson(const app::ImportSource& source, const ImportedRules& rules,
                      const app::ImportChoices& choices, const std::string& file)
{
    const auto number = [](std::size_t count) { return static_cast<std::int64_t>(count); };
    JsonWriter json;
    json.BeginObject().Key("file").Text(file);
    json.Key("kind").Text(source.KindWord());
    json.Key("rules").Number(number(rules.rules));
    json.Key("datedDays").Number(number(rules.datedDays));
    json.Key("duplicates").Number(number(rules.duplicates));
    json.Key("outside").Number(number(rules.outside));
    if (const FoundTable* const table = source.Table())
        WriteTable(json, *table, choices.dateOrder.value_or(table->layout.dates.order));
    if (source.KindWord() == "hol")
        json.Key("sections").Texts(source.Sections());
    json.Key("passedOver").BeginArray();
    for (const exchange::PassedOver& line : rules.passedOver) {
        json.BeginObject().Key("line").Number(number(line.line));
        json.Key("reason").Text(line.reason).EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

} // namespace

void RunImportCommand(Session& session)
{
    const CommandLine& line = session.line;
    const app::ImportSource source(util::ToPath(line.importFile));
    const app::ImportChoices choices = ChoicesOf(session, source);
    const std::string file = TargetOf(session);
    const ImportedRules rules = RulesOf(source.Read(choices), AskedYears(line));
    if (!line.json) {
        if (const FoundTable* const table = source.Table())
            PrintTable(session.console.out, *table,
                       choices.dateOrder.value_or(table->layout.dates.order));
        PrintRules(session.console.out, rules);
    }
    if (rules.entries.empty())
        throw Error(ErrorKind::NothingToImport, line.importFile);
    app::WriteImportedFile(file, rules, util::FileName(util::AbsolutePath(line.importFile)));
    if (line.json)
        PrintJson(session, ImportJson(source, rules, choices, file));
    else
        session.console.out << file << '\n';
}

} // namespace orrery::cli
