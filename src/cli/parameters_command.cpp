#include "cli/commands.h"
#include "model/cell_ref.h"
#include "model/parameter_text.h"

#include <ostream>

namespace orrery::cli {
namespace {

template <std::size_t NamesPerList>
void WriteNames(JsonWriter& json, const char* key,
                const std::array<std::string, NamesPerList>& names)
{
    json.Key(key).Texts({names.begin(), names.end()});
}

void WriteHolidays(JsonWriter& json, const holidays::HolidayList& list)
{
    json.Key("Holidays").BeginArray();
    for (const holidays::HolidayDef& rule : list) {
        json.BeginObject().Key("DateCode").Number(rule.DateCode).Key("Kind").Number(rule.Kind);
        json.Key("Name").Text(rule.Name).EndObject();
    }
    json.EndArray();
}

void WriteCell(JsonWriter& json, const char* key, model::CellPosition cell)
{
    json.Key(key).Text(model::FormatCellRef(cell));
}

/// The members that both calendars have, named as in the parameter file.
void WriteSet(JsonWriter& json, const model::CalendarParameters& set,
              const model::NameTables& names)
{
    json.Key("Output").Boolean(set.Output).Key("SheetName").Text(set.SheetName);
    json.Key("FirstDayOfWeek").Number(set.FirstDayOfWeek);
    WriteCell(json, "FirstCellOfDay", set.FirstCellOfDay);
    json.Key("ColIntervalOfDay").Number(set.ColIntervalOfDay);
    json.Key("RowIntervalOfDay").Number(set.RowIntervalOfDay);
    json.Key("OutWeekday").Boolean(set.OutWeekday);
    WriteCell(json, "FirstCellOfWeekday", set.FirstCellOfWeekday);
    WriteNames(json, "WeekdayName", names.Weekdays.At(set.WeekdayName));
    json.Key("OutMonth").Boolean(set.OutMonth);
    WriteCell(json, "FirstCellOfMonth", set.FirstCellOfMonth);
    WriteNames(json, "MonthName", names.Months.At(set.MonthName));
    json.Key("OutYear").Boolean(set.OutYear);
    WriteCell(json, "FirstCellOfYear", set.FirstCellOfYear);
    json.Key("OutHoliday").Boolean(set.OutHoliday);
    WriteCell(json, "FirstCellOfHoliday", set.FirstCellOfHoliday);
    json.Key("MultiHolidays").Number(set.MultiHolidays);
    WriteHolidays(json, set.Holidays);
}

JsonWriter ParametersJson(const ChosenTemplate& chosen)
{
    const auto& [monthly, yearly] = chosen.sets;
    JsonWriter json;
    json.BeginObject().Key("template").Text(chosen.settings.TemplatePath + chosen.file);
    json.Key("monthly").BeginObject();
    WriteSet(json, monthly, chosen.settings.names);
    json.EndObject().Key("yearly").BeginObject();
    WriteSet(json, yearly, chosen.settings.names);
    json.Key("MonthLayout").Number(yearly.MonthLayout);
    json.Key("ColIntervalOfMonth").Number(yearly.ColIntervalOfMonth);
    json.Key("RowIntervalOfMonth").Number(yearly.RowIntervalOfMonth);
    json.EndObject().EndObject();
    return json;
}

} // namespace

void RunParametersCommand(Session& session)
{
    const ChosenTemplate chosen = ChooseTemplate(session);
    if (session.line.json)
        PrintJson(session, ParametersJson(chosen));
    else
        session.console.out << WithPlainLineEnds(
            model::FormatParameterText(chosen.settings.names, chosen.sets));
}

} // namespace orrery::cli
