#include "ui/import_form.h"

#include "exchange/error.h"
#include "holidays/language/rule_words.h"
#include "holidays/language/words.h"
#include "util/error_text.h"
#include "util/file_read.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <utility>

namespace orrery::ui {
namespace {

constexpr std::size_t kMostEventsShown = 10;
constexpr std::size_t kMostLinesShown = 200;
constexpr int kLastYear = 9999;

std::string Counted(std::size_t count, const std::string& one, const std::string& several)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : several);
}

std::string WithCapital(std::string text)
{
    text.replace(0, 1, util::ToUpperAscii(text.substr(0, 1)));
    return text;
}

/// "Club.csv: table, separator comma, dates in "Date", names in "Name"; ignored: "Place"".
std::string WordsOf(const app::ImportSource& source, const std::string& name)
{
    std::string words = (name.empty() ? "Clipboard" : name) + ": " + source.KindInWords();
    const exchange::FoundTable* const table = source.Table();
    if (table == nullptr)
        return words;
    if (table->columns.empty())
        return words + ", a date and a name in each line";
    const auto column = [table](std::size_t index) { return '"' + table->columns.at(index) + '"'; };
    const exchange::TableLayout& layout = table->layout;
    words += ", separator " + std::string(exchange::WordOfSeparator(layout.separator)) +
             ", dates in " + column(layout.dateColumn) + ", names in " + column(layout.nameColumn);
    if (layout.endColumn)
        words += ", last days in " + column(*layout.endColumn);
    if (!table->ignored.empty())
        words += "; ignored: " + util::Join(table->ignored, ", ");
    return words;
}

/// "1 May 2027 Summer party".
std::string WordsOf(const exchange::Event& event)
{
    holidays::RuleDay day;
    if (event.yearly)
        day = event.yearly->day;
    else
        day.kind = holidays::ListedDates{event.days};
    return holidays::DayInWords(day) + "  " + event.name;
}

/// Whether a text can be the name of a file on every system.
bool IsFileName(std::string_view name)
{
    return name.find_first_of("\\/:*?\"<>|") == std::string_view::npos && !name.starts_with('.') &&
           !name.ends_with('.');
}

} // namespace

ImportForm::ImportForm(ImportTask task)
    : Form("frmImport", "Import Days", "import"), task_(std::move(task))
{
    lblKind.ShowText(WordsOf(task_.source, task_.name));
    txtTarget.text = task_.name.empty() ? "Imported days" : util::BaseName(task_.name);
    FillOrders();
    Read();
    SetFocus(cboDateOrder.visible ? static_cast<const Control&>(cboDateOrder) : txtTarget);
}

void ImportForm::FillOrders()
{
    const exchange::FoundTable* const table = task_.source.Table();
    const bool isQuestion = table != nullptr && table->orders.size() > 1;
    lblDateOrder.visible = cboDateOrder.visible = isQuestion;
    if (!isQuestion)
        return;
    for (const exchange::DateOrder order : table->orders)
        cboDateOrder.entries.push_back(WithCapital(std::string(InWords(order))));
    cboDateOrder.selected = 0;
}

std::optional<exchange::Years> ImportForm::TypedYears() const
{
    const std::string_view text = util::Trim(txtYears.text);
    const std::size_t dash = std::min(text.find('-'), text.size());
    const auto first = holidays::IntegerOf(util::Trim(text.substr(0, dash)));
    const auto last =
        dash == text.size() ? first : holidays::IntegerOf(util::Trim(text.substr(dash + 1)));
    if (!first || !last || *first < 1 || *last < *first || *last > kLastYear)
        return std::nullopt;
    return exchange::Years{*first, *last};
}

bool ImportForm::AreYearsWrong() const
{
    return !util::Trim(txtYears.text).empty() && !TypedYears();
}

void ImportForm::Read()
{
    app::ImportChoices choices;
    choices.years = TypedYears().value_or(app::TenYearsFrom(task_.year));
    if (cboDateOrder.HasSelection())
        choices.dateOrder =
            task_.source.Table()->orders.at(static_cast<std::size_t>(cboDateOrder.selected));
    calendar_ = task_.source.Read(choices);
    ShowRules();
}

void ImportForm::ShowRules()
{
    tooMany_.clear();
    rules_ = {};
    try {
        rules_ = RulesOf(calendar_, TypedYears());
    }
    catch (const Error& error) {
        if (error.Kind() != exchange::ErrorKind::TooManyRules)
            throw;
        tooMany_ = util::ErrorText(error);
    }
    std::string counts = Counted(rules_.rules, "rule", "rules") + ", " +
                         Counted(rules_.datedDays, "dated day", "dated days");
    if (rules_.duplicates > 0)
        counts += ", " + Counted(rules_.duplicates, "duplicate", "duplicates");
    if (rules_.outside > 0)
        counts += ", " + Counted(rules_.outside, "event", "events") + " without a day in the years";
    lblCounts.ShowText(tooMany_.empty() ? counts : "");
    txtEvents.text = FirstEvents();
    ShowPassedOver();
    ShowTarget();
}

std::string ImportForm::FirstEvents() const
{
    std::string lines;
    const std::size_t count = std::min(calendar_.events.size(), kMostEventsShown);
    for (std::size_t i = 0; i < count; ++i)
        lines += (i > 0 ? "\n" : "") + WordsOf(calendar_.events[i]);
    return lines;
}

void ImportForm::ShowPassedOver()
{
    const auto& lines = calendar_.passedOver;
    lblPassedOver.visible = txtPassedOver.visible = !lines.empty();
    txtPassedOver.text.clear();
    const std::size_t shown = std::min(lines.size(), kMostLinesShown);
    for (std::size_t i = 0; i < shown; ++i)
        txtPassedOver.text += (i > 0 ? "\n" : "") + ("Line " + std::to_string(lines[i].line)) +
                              ": " + lines[i].reason;
    if (lines.size() > shown)
        txtPassedOver.text += "\nand " + Counted(lines.size() - shown, "line", "lines") + " more";
}

void ImportForm::cboDateOrder_Click()
{
    Read();
}

void ImportForm::ShowYears()
{
    if (AreYearsWrong())
        return ShowProblem();
    Read();
}

std::string ImportForm::TargetFile() const
{
    return task_.ownFolder + std::string(util::Trim(txtTarget.text)) + ".txt";
}

void ImportForm::ShowTarget()
{
    chkReplace.enabled =
        IsFileName(util::Trim(txtTarget.text)) && !util::IsMissing(util::ToPath(TargetFile()));
    if (!chkReplace.enabled)
        chkReplace.checked = false;
    ShowProblem();
}

std::optional<ImportForm::Problem> ImportForm::FindProblem() const
{
    const std::string_view target = util::Trim(txtTarget.text);
    if (AreYearsWrong())
        return Problem{"Type years such as 2027 or 2027-2030.", &txtYears};
    if (!tooMany_.empty())
        return Problem{tooMany_, &txtYears};
    if (rules_.entries.empty())
        return Problem{"There are no events that can be holidays.", &txtYears};
    if (target.empty())
        return Problem{"Type a name for the list.", &txtTarget};
    if (!IsFileName(target))
        return Problem{"The name becomes that of a file: type it without \\ / : * ? \" < > |.",
                       &txtTarget};
    if (chkReplace.enabled && !chkReplace.checked)
        return Problem{"There is a list of that name. Type another one, or replace it.",
                       &txtTarget};
    return std::nullopt;
}

void ImportForm::ShowProblem()
{
    const auto problem = FindProblem();
    lblProblem.ShowText(problem ? problem->sentence : "");
}

void ImportForm::cmdOK_Click()
{
    const auto problem = FindProblem();
    if (!problem)
        return Accept();
    lblProblem.ShowText(problem->sentence);
    SetFocus(*problem->field);
}

} // namespace orrery::ui
