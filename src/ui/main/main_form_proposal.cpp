#include "app/offered_names.h"
#include "look/display/now.h"
#include "ui/main/main_form.h"
#include "util/paths.h"
#include "util/text.h"

#include <array>
#include <ctime>
#include <exception>
#include <system_error>
#include <utility>

namespace orrery::ui {
namespace {

/// What the sentence calls parameters that the sheets do not tell. Others are not missed.
struct MissedParameter {
    const char* key;
    const char* spoken;
};
constexpr std::array kMissed{
    MissedParameter{"FirstDayOfWeek", "the first day of the week"},
    MissedParameter{"WeekdayName", "the names of the weekdays"},
    MissedParameter{"MonthName", "the names of the months"},
};

/// "a, b and c", or with another word before the last one.
std::string Listed(const std::vector<std::string>& parts, const char* word)
{
    if (parts.size() < 2)
        return util::Join(parts, "");
    const std::vector<std::string> first(parts.begin(), parts.end() - 1);
    return util::Join(first, ", ") + ' ' + word + ' ' + parts.back();
}

std::string FoundCalendars(const model::ParameterSets& sets)
{
    std::vector<std::string> calendars;
    if (sets.Monthly.Output)
        calendars.push_back("a month grid on '" + sets.Monthly.SheetName + "'");
    if (sets.Yearly.Output)
        calendars.push_back("a year page on '" + sets.Yearly.SheetName + "'");
    return Listed(calendars, "and");
}

/// "Orrery found a month grid on 'Kalender' and a year page on 'Jahr'."
std::string ProposalSentence(const look::Proposal& proposal)
{
    std::string text = std::string(kProductName) + " found " + FoundCalendars(proposal.sets) + ".";
    std::vector<std::string> missed;
    for (const MissedParameter& parameter : kMissed) {
        if (proposal.unknown.contains("monthly." + std::string(parameter.key)) ||
            proposal.unknown.contains("yearly." + std::string(parameter.key)))
            missed.emplace_back(parameter.spoken);
    }
    if (!missed.empty())
        text += " The sheets do not tell " + Listed(missed, "or") + ".";
    return text;
}

} // namespace

void MainForm::RefreshProposal()
{
    if (CanTakeProposal()) {
        const auto path = util::ToPath(settings_.TemplatePath + currentTemplate_);
        std::error_code ignored; // what cannot be looked at makes no proposal either
        const auto changed = std::filesystem::last_write_time(path, ignored);
        if (!found_ || found_->path != path || found_->changed != changed)
            found_ = FoundProposal{path, changed, FindProposal(path)};
    }
    ShowProposal();
}

/// Whether the chosen template has the default parameters for want of others.
bool MainForm::CanTakeProposal() const
{
    return !currentTemplate_.empty() && !working.parameterFileExists && !working.readError &&
           working.sets == model::CopyDefaults(settings_.defaults);
}

std::optional<look::Proposal> MainForm::FindProposal(const std::filesystem::path& path)
{
    try {
        const auto view = engines_.OpenView(path);
        const auto offered = app::OfferedNames(settings_.names, system_.installed);
        auto proposal =
            look::Propose(*view, offered, working.sets, look::LocalSerial(std::time(nullptr)));
        app::AdoptNames(offered, settings_.names, proposal.sets);
        if (proposal.sets.Monthly.Output || proposal.sets.Yearly.Output)
            return proposal;
    }
    catch (const std::exception&) { // the preview tells it in the place of the pages
        return std::nullopt;
    }
    return std::nullopt;
}

/// Shows the bar with the proposal for the chosen template, if it was found and is of use.
void MainForm::ShowProposal()
{
    const bool isFound = CanTakeProposal() && found_ && found_->proposal &&
                         found_->path == util::ToPath(settings_.TemplatePath + currentTemplate_);
    lblProposal.visible = cmdUseProposal.visible = cmdLookFirst.visible = isFound;
    if (isFound)
        lblProposal.ShowText(ProposalSentence(*found_->proposal));
}

void MainForm::cmdUseProposal_Click()
{
    working.sets = found_->proposal->sets;
    working.monthlyChanged = working.yearlyChanged = true;
    UpdateButtons();
    SetFocus(cmdGenerate); // the button is gone
}

void MainForm::cmdLookFirst_Click()
{
    Modify(&found_->proposal->sets);
    if (!cmdLookFirst.visible)
        SetFocus(cmdGenerate);
}

} // namespace orrery::ui
