#include "cli/commands.h"
#include "model/cell_ref.h"
#include "model/parameter_table.h"
#include "model/parameter_text.h"

#include <ostream>

namespace orrery::cli {
namespace {

void WriteHolidays(JsonWriter& json, const holidays::HolidayList& list)
{
    json.Key("Holidays").BeginArray();
    for (const holidays::HolidayDef& rule : list) {
        json.BeginObject().Key("DateCode").Number(rule.DateCode).Key("Kind").Number(rule.Kind);
        json.Key("Name").Text(rule.Name).EndObject();
    }
    json.EndArray();
}

/// Writes parameters as members, named as in the parameter file.
class MemberWriter {
public:
    MemberWriter(JsonWriter& json, const model::NameTables& names) : json_(json), names_(names) {}

    void operator()(const model::FlagParameter& flag, bool value)
    {
        json_.Key(flag.key).Boolean(value);
    }
    void operator()(const model::SheetNameParameter& name, const std::string& value)
    {
        json_.Key(name.key).Text(value);
    }
    void operator()(const model::FirstDayParameter& day, std::int16_t value)
    {
        json_.Key(day.key).Number(value);
    }
    void operator()(const model::NumberParameter& number, std::int32_t value)
    {
        json_.Key(number.key).Number(value);
    }
    void operator()(const model::CellParameter& cell, model::CellPosition value)
    {
        json_.Key(cell.key).Text(model::FormatCellRef(value));
    }
    void operator()(const model::WeekdayNamesParameter& list, std::int16_t value)
    {
        WriteNames(list.key, names_.Weekdays.At(value));
    }
    void operator()(const model::MonthNamesParameter& list, std::int16_t value)
    {
        WriteNames(list.key, names_.Months.At(value));
    }

private:
    template <typename Names> void WriteNames(std::string_view key, const Names& names)
    {
        json_.Key(key).Texts({names.begin(), names.end()});
    }

    JsonWriter& json_;
    const model::NameTables& names_;
};

JsonWriter ParametersJson(const ChosenTemplate& chosen)
{
    const auto& [monthly, yearly] = chosen.sets;
    JsonWriter json;
    MemberWriter writer(json, chosen.settings.names);
    json.BeginObject().Key("template").Text(chosen.settings.TemplatePath + chosen.file);
    json.Key("monthly").BeginObject();
    model::VisitParameters(monthly, writer);
    WriteHolidays(json, monthly.Holidays);
    json.EndObject().Key("yearly").BeginObject();
    // The members that both calendars have come first: scripts may rely on the order.
    model::VisitParameters(static_cast<const model::CalendarParameters&>(yearly), writer);
    WriteHolidays(json, yearly.Holidays);
    model::VisitYearlyParameters(yearly, writer);
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
