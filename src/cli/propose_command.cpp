#include "app/offered_names.h"
#include "cli/commands.h"
#include "cli/error.h"
#include "look/advisor/propose.h"
#include "look/display/now.h"
#include "model/parameter_file.h"
#include "model/parameter_table.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace orrery::cli {
namespace {

/// The switch that a parameter needs to count, or nothing.
std::string_view SwitchOf(std::string_view key)
{
    if (key == "FirstCellOfWeekday" || key == "WeekdayName")
        return "OutWeekday";
    if (key == "FirstCellOfMonth" || key == "MonthName")
        return "OutMonth";
    if (key == "FirstCellOfYear")
        return "OutYear";
    if (key == "FirstCellOfHoliday" || key == "MultiHolidays")
        return "OutHoliday";
    return {};
}

/// Collects the proposed parameters of a calendar with their values as in a parameter file.
class ValueCollector {
public:
    ValueCollector(std::string calendar, const model::NameTables& names,
                   const look::Proposal& proposal)
        : calendar_(std::move(calendar)), names_(names), proposal_(proposal)
    {
    }

    void operator()(const model::FlagParameter& flag, bool value)
    {
        if (!value)
            off_.push_back(flag.key);
        isThere_ = isThere_ && (flag.key != "Output" || value);
        Add(flag.key, value ? "Y" : "N");
    }
    void operator()(const model::SheetNameParameter& name, const std::string& value)
    {
        Add(name.key, value);
    }
    void operator()(const model::FirstDayParameter& day, std::int16_t value)
    {
        Add(day.key, std::to_string(value));
    }
    void operator()(const model::NumberParameter& number, std::int32_t value)
    {
        Add(number.key, std::to_string(value));
    }
    void operator()(const model::CellParameter& cell, model::CellPosition value)
    {
        Add(cell.key, model::FormatCellRef(value));
    }
    void operator()(const model::WeekdayNamesParameter& list, std::int16_t value)
    {
        AddNames(list.key, names_.Weekdays.At(value));
    }
    void operator()(const model::MonthNamesParameter& list, std::int16_t value)
    {
        AddNames(list.key, names_.Months.At(value));
    }
    const std::vector<std::pair<std::string, std::string>>& Values() const { return values_; }

private:
    template <typename Names> void AddNames(std::string_view key, const Names& names)
    {
        Add(key, util::Join({names.begin(), names.end()}, ","));
    }
    void Add(std::string_view key, std::string value)
    {
        const bool isOff = std::ranges::find(off_, SwitchOf(key)) != off_.end();
        const bool isUnknown = proposal_.unknown.contains(calendar_ + '.' + std::string(key));
        if ((isThere_ || key == "Output") && !isOff && !isUnknown)
            values_.emplace_back(key, std::move(value));
    }

    std::string calendar_;
    const model::NameTables& names_;
    const look::Proposal& proposal_;
    bool isThere_ = true;
    std::vector<std::string_view> off_;
    std::vector<std::pair<std::string, std::string>> values_;
};

/// Both calendars, each with its name in the JSON object.
template <typename Visit>
void VisitCalendars(const look::Proposal& proposal, const model::NameTables& names, Visit visit)
{
    ValueCollector monthly("monthly", names, proposal);
    model::VisitParameters(proposal.sets.Monthly, monthly);
    visit(std::string("monthly"), monthly.Values());
    ValueCollector yearly("yearly", names, proposal);
    model::VisitParameters(proposal.sets.Yearly, yearly);
    visit(std::string("yearly"), yearly.Values());
}

using Values = std::vector<std::pair<std::string, std::string>>;

JsonWriter ProposalJson(const look::Proposal& proposal, const model::NameTables& names)
{
    JsonWriter json;
    json.BeginObject();
    VisitCalendars(proposal, names, [&](const std::string& calendar, const Values& values) {
        json.Key(calendar).BeginObject();
        for (const auto& [key, value] : values)
            json.Key(key).Text(value);
        json.EndObject();
    });
    json.Key("unknown").Texts({proposal.unknown.begin(), proposal.unknown.end()});
    json.Key("reasons").BeginArray();
    for (const look::Reason& reason : proposal.reasons) {
        json.BeginObject().Key("parameter").Text(reason.parameter);
        json.Key("because").Text(reason.because).EndObject();
    }
    json.EndArray().EndObject();
    return json;
}

std::string ReasonOf(const look::Proposal& proposal, const std::string& parameter)
{
    const auto found = std::ranges::find(proposal.reasons, parameter, &look::Reason::parameter);
    return found == proposal.reasons.end() ? std::string() : ": " + found->because;
}

/// A few lines for a reader.
void PrintProposal(std::ostream& out, const look::Proposal& proposal,
                   const model::NameTables& names)
{
    VisitCalendars(proposal, names, [&](const std::string& calendar, const Values& values) {
        if (values.size() == 1) {
            out << "No " << calendar << " calendar\n";
            return;
        }
        out << (calendar == "monthly" ? "Monthly" : "Yearly") << " calendar\n";
        const std::string prefix = calendar + '.';
        for (const auto& [key, value] : values) {
            std::string parameter = prefix;
            parameter += key;
            out << "  " << key << '=' << value << ReasonOf(proposal, parameter) << '\n';
        }
        for (const std::string& parameter : proposal.unknown) {
            if (parameter.starts_with(calendar))
                out << "  " << parameter.substr(calendar.size() + 1) << " is unknown"
                    << ReasonOf(proposal, parameter) << '\n';
        }
    });
}

/// Throws Error (ParametersExist, NothingToWrite) if there is a parameter file or no calendar.
void WriteProposal(const ChosenTemplate& chosen, const look::Proposal& proposal,
                   const model::NameTables& names)
{
    const std::string file = model::ParameterFilePath(chosen.settings.TemplatePath, chosen.file);
    const auto path = util::ToPath(file);
    std::error_code ignored; // what cannot be looked at is not replaced either
    if (chosen.hasParameterFile || std::filesystem::exists(path, ignored))
        throw Error(ErrorKind::ParametersExist, file);
    if (!proposal.sets.Monthly.Output && !proposal.sets.Yearly.Output)
        throw Error(ErrorKind::NothingToWrite, chosen.file);
    model::WriteParameterFile(path, names, proposal.sets);
}

} // namespace

void RunProposeCommand(Session& session)
{
    const ChosenTemplate chosen = ChooseTemplate(session);
    const auto path = util::ToPath(chosen.settings.TemplatePath + chosen.file);
    const auto names = app::OfferedNames(chosen.settings.names, session.system.installed);
    const auto view = session.engines.OpenView(path);
    const look::Proposal proposal =
        look::Propose(*view, names, model::CopyDefaults(chosen.settings.defaults),
                      look::LocalSerial(session.console.now));
    if (session.line.write)
        WriteProposal(chosen, proposal, names);
    if (session.line.json)
        PrintJson(session, ProposalJson(proposal, names));
    else
        PrintProposal(session.console.out, proposal, names);
}

} // namespace orrery::cli
