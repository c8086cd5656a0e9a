#include "ui/holiday_rules.h"

#include "book/names.h"
#include "holidays/language/language_names.h"
#include "holidays/language/next_days.h"
#include "holidays/language/rule_words.h"
#include "util/text.h"

#include <algorithm>
#include <set>
#include <utility>

namespace orrery::ui {
namespace {

using holidays::Category;
using holidays::HolidayChoice;
using holidays::Region;
using holidays::Rule;
using holidays::RuleSet;

Category CategoryOf(const Rule& rule)
{
    return rule.refinements.category.value_or(Category::Public);
}

template <typename Value> bool Holds(const std::vector<Value>& values, const Value& value)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool HasCategory(const RuleSet& set, Category category)
{
    const auto files = holidays::FilesOf(set);
    return std::any_of(files.begin(), files.end(), [category](const RuleSet* file) {
        return std::any_of(file->rules.begin(), file->rules.end(),
                           [category](const Rule& rule) { return CategoryOf(rule) == category; });
    });
}

/// The languages that names are in, beside that of the rules themselves.
std::set<std::string> LanguagesOf(const RuleSet& set)
{
    std::set<std::string> languages;
    for (const RuleSet* const file : holidays::FilesOf(set)) {
        for (const Rule& rule : file->rules) {
            for (const auto& [language, name] : rule.refinements.names)
                languages.insert(language);
        }
    }
    return languages;
}

/// The part of a choice that a set of rules has.
HolidayChoice PossibleOf(const HolidayChoice& wanted, const RuleSet& set)
{
    HolidayChoice possible;
    if (holidays::HasRegion(set, wanted.region))
        possible.region = wanted.region;
    if (LanguagesOf(set).contains(wanted.language))
        possible.language = wanted.language;
    std::vector<Category> categories;
    for (const Category category : wanted.categories) {
        if (category == Category::Public || HasCategory(set, category))
            categories.push_back(category);
    }
    if (!categories.empty())
        possible.categories = std::move(categories);
    return possible;
}

std::string NextInWords(const holidays::NextDays& next)
{
    using State = holidays::NextDays::State;
    switch (next.state) {
    case State::None:
        return "none";
    case State::OtherRegion:
        return "other region";
    case State::OtherKind:
        return "kind not shown";
    case State::Given:
        break;
    }
    std::string words = holidays::DateInWords(next.first, true);
    if (next.isEstimated)
        words += ", estimated";
    return next.more == 0 ? words : words + " (+" + std::to_string(next.more) + ')';
}

/// A text without tabs, which separate cells, and without the blanks around it.
std::string Cell(std::string text)
{
    std::replace(text.begin(), text.end(), '\t', ' ');
    return std::string(util::Trim(text));
}

std::string FoldedNames(const Rule& rule)
{
    std::string names = rule.name;
    for (const auto& [language, name] : rule.refinements.names)
        (names += '\n') += name;
    return book::FoldCase(names);
}

/// Selects the entry of a code, of which each entry has one.
void SelectCode(ComboBox& list, const std::vector<std::string>& codes, const std::string& code)
{
    list.selected = static_cast<int>(std::find(codes.begin(), codes.end(), code) - codes.begin());
}

} // namespace

HolidayRules::HolidayRules(HolidayChoice choice, std::optional<int> year)
    : chkKinds{CheckBox("chkPublic", "&Public"),         CheckBox("chkBank", "&Bank"),
               CheckBox("chkSchool", "&School"),         CheckBox("chkOptional", "Op&tional"),
               CheckBox("chkObservance", "Obser&vance"), CheckBox("chkHalf", "&Half")},
      titles{"Name", "Rule", year ? "Next from " + std::to_string(*year) : "Next", "Kind"},
      year_(year), wanted_(std::move(choice)), choice_(wanted_)
{
}

void HolidayRules::Show(RuleSet rules)
{
    selectedRule_ = 0;
    Update(std::move(rules));
}

void HolidayRules::Update(RuleSet rules)
{
    rules_ = std::move(rules);
    ShowChoosers();
    MakeRows();
}

void HolidayRules::Select(std::size_t rule)
{
    txtFind.text.clear();
    selectedRule_ = rule;
    ShowRows();
}

void HolidayRules::Show(RuleSet rules, HolidayChoice choice)
{
    wanted_ = std::move(choice);
    choice_ = wanted_;
    Show(std::move(rules));
}

void HolidayRules::ShowOther(RuleSet rules)
{
    choice_ = PossibleOf(wanted_, rules);
    Show(std::move(rules));
}

void HolidayRules::ShowChoosers()
{
    ShowRegions();
    ShowLanguages();
    ShowKinds();
}

void HolidayRules::ShowRegions()
{
    regions_ = {""};
    cboRegion.entries = {"(None)"};
    for (const Region& region : holidays::RegionsOf(rules_)) {
        regions_.push_back(region.code);
        cboRegion.entries.push_back(region.name.empty() ? region.code : region.name);
    }
    if (!Holds(regions_, choice_.region)) {
        regions_.push_back(choice_.region);
        cboRegion.entries.push_back(choice_.region);
    }
    SelectCode(cboRegion, regions_, choice_.region);
    lblRegion.visible = cboRegion.visible = regions_.size() > 1;
}

void HolidayRules::ShowLanguages()
{
    const std::string own = util::ToLowerAscii(rules_.language);
    std::set<std::string> others = LanguagesOf(rules_);
    others.insert(choice_.language);
    others.erase("");
    others.erase(own);
    languages_ = {""};
    cboLanguage.entries = {rules_.language.empty() ? "(As written)"
                                                   : holidays::LanguageName(rules_.language)};
    for (const std::string& language : others) {
        languages_.push_back(language);
        cboLanguage.entries.push_back(holidays::LanguageName(language));
    }
    SelectCode(cboLanguage, languages_, choice_.language == own ? "" : choice_.language);
    lblLanguage.visible = cboLanguage.visible = languages_.size() > 1;
}

void HolidayRules::ShowKinds()
{
    std::size_t shown = 0;
    for (const Category category : holidays::AllCategories()) {
        CheckBox& box = chkKinds.at(static_cast<std::size_t>(category));
        box.checked = Holds(choice_.categories, category);
        box.visible = box.checked || category == Category::Public || HasCategory(rules_, category);
        shown += box.visible ? 1U : 0U;
    }
    lblKinds.visible = shown > 1;
    if (shown == 1)
        chkKinds.front().visible = false;
}

void HolidayRules::MakeRows()
{
    std::vector<holidays::NextDays> next;
    if (year_)
        next = holidays::NextDaysOf(rules_, *year_, choice_);
    rows_.clear();
    for (const RuleSet* const file : holidays::FilesOf(rules_)) {
        for (const Rule& rule : file->rules) {
            const std::string line = Cell(holidays::NameOf(rule, choice_.language)) + '\t' +
                                     Cell(holidays::RuleInWords(rule, file->regions)) + '\t' +
                                     (year_ ? NextInWords(next[rows_.size()]) : std::string()) +
                                     '\t' + holidays::KindInWords(rule);
            rows_.push_back({line, FoldedNames(rule)});
        }
    }
    ShowRows();
}

void HolidayRules::ShowRows()
{
    const std::string wanted = book::FoldCase(std::string(util::Trim(txtFind.text)));
    lstRules.lines.clear();
    found_.clear();
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i].names.find(wanted) == std::string::npos)
            continue;
        lstRules.lines.push_back(rows_[i].line);
        found_.push_back(i);
    }
    const auto line = std::find(found_.begin(), found_.end(), selectedRule_);
    if (line != found_.end())
        lstRules.selected = static_cast<int>(line - found_.begin());
    else
        lstRules.selected = found_.empty() ? -1 : 0;
    ShowWholeRule();
}

void HolidayRules::ShowWholeRule()
{
    txtRule.text.clear();
    if (!lstRules.HasSelection())
        return;
    const std::size_t index = found_.at(static_cast<std::size_t>(lstRules.selected));
    const Rule& rule = holidays::RuleAt(rules_, index);
    const std::string name(util::Trim(holidays::NameOf(rule, choice_.language)));
    txtRule.text = name.empty() ? "" : name + ": ";
    txtRule.text += holidays::RuleInWords(rule, holidays::FileAt(rules_, index).regions,
                                          holidays::Lists::Whole);
}

const Rule* HolidayRules::SelectedRule() const
{
    if (!lstRules.HasSelection())
        return nullptr;
    return &holidays::RuleAt(rules_, found_.at(static_cast<std::size_t>(lstRules.selected)));
}

void HolidayRules::lstRules_Click()
{
    if (lstRules.HasSelection())
        selectedRule_ = found_.at(static_cast<std::size_t>(lstRules.selected));
    ShowWholeRule();
}

void HolidayRules::Find()
{
    ShowRows();
}

void HolidayRules::cboRegion_Click()
{
    if (!cboRegion.HasSelection())
        return;
    choice_.region = regions_.at(static_cast<std::size_t>(cboRegion.selected));
    wanted_.region = choice_.region;
    TakeChoice();
}

void HolidayRules::ChooseRegion(const std::string& code)
{
    const auto found = std::ranges::find(regions_, code);
    if (found == regions_.end())
        return;
    cboRegion.Select(static_cast<int>(found - regions_.begin()));
    cboRegion_Click();
}

void HolidayRules::cboLanguage_Click()
{
    if (!cboLanguage.HasSelection())
        return;
    choice_.language = languages_.at(static_cast<std::size_t>(cboLanguage.selected));
    wanted_.language = choice_.language;
    TakeChoice();
}

void HolidayRules::chkKind_Click(CheckBox& box)
{
    std::vector<Category> chosen;
    for (const Category category : holidays::AllCategories()) {
        if (chkKinds.at(static_cast<std::size_t>(category)).checked)
            chosen.push_back(category);
    }
    if (chosen.empty()) {
        box.checked = true;
        return;
    }
    choice_.categories = std::move(chosen);
    wanted_.categories = choice_.categories;
    TakeChoice();
}

void HolidayRules::TakeChoice()
{
    hasChanged_ = true;
    MakeRows();
}

} // namespace orrery::ui
