#pragma once

#include "holidays/language/holiday_choice.h"
#include "holidays/language/rule_set.h"
#include "ui/controls.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The part of the holiday dialog that says every rule in words, finds rules by their names, and
/// chooses which holidays a calendar shows.
class HolidayRules {
public:
    /// `choice` is the calendar's own. With a year, each rule has its next day from then on.
    HolidayRules(holidays::HolidayChoice choice, std::optional<int> year);

    /// Shows the rules of the calendar, with its choice as it is.
    void Show(holidays::RuleSet rules);
    /// The same with another choice, which takes the place of the calendar's.
    void Show(holidays::RuleSet rules, holidays::HolidayChoice choice);
    /// Shows the rules after a change of the list; the same line stays selected.
    void Update(holidays::RuleSet rules);
    /// Selects a rule by its index among all, whatever was searched for.
    void Select(std::size_t rule);
    /// Shows the rules of another list. What it does not have is not chosen any more.
    void ShowOther(holidays::RuleSet rules);

    // The user typed or chose.
    void Find();
    void cboRegion_Click();
    /// Chooses a region by its code, if there is one.
    void ChooseRegion(const std::string& code);
    void cboLanguage_Click();
    /// At least one kind stays chosen.
    void chkKind_Click(CheckBox& box);
    void lstRules_Click();

    /// The rule of the selected line, if there is one; valid until others are shown.
    const holidays::Rule* SelectedRule() const;
    const holidays::HolidayChoice& Choice() const { return choice_; }
    /// Whether the user chose something.
    bool HasChanged() const { return hasChanged_; }

    Label lblFind{"lblFind", "Fi&nd:"};
    TextBox txtFind{"txtFind"};
    // Visible where the rules have regions, languages or kinds to choose.
    Label lblRegion{"lblRegion", "&Region:"};
    ComboBox cboRegion{"cboRegion"};
    Label lblLanguage{"lblLanguage", "Lan&guage:"};
    ComboBox cboLanguage{"cboLanguage"};
    Label lblKinds{"lblKinds", "Kinds:"};
    std::array<CheckBox, 6> chkKinds; ///< by category
    Label lblRules{"lblRules", "&All Rules:"};
    ListBox lstRules{"lstRules"};      ///< name, rule in words, next day, kind
    std::array<std::string, 4> titles; ///< of these columns
    Label lblRule{"lblRule", "&Whole Rule:"};
    TextBox txtRule{"txtRule"}; ///< the selected rule with nothing left out; read only

private:
    /// A rule with what it is found by, at the same index as the rule.
    struct Row {
        std::string line;
        std::string names; ///< in all languages, folded, each on a line
    };

    void ShowChoosers();
    void ShowRegions();
    void ShowLanguages();
    void ShowKinds();
    void MakeRows();
    void ShowRows();
    void ShowWholeRule();
    void TakeChoice();

    const std::optional<int> year_;
    holidays::HolidayChoice wanted_; ///< what the user chose, wherever it is possible
    holidays::HolidayChoice choice_;
    bool hasChanged_ = false;
    holidays::RuleSet rules_;
    std::vector<std::string> regions_;   ///< codes of the entries
    std::vector<std::string> languages_; ///< the same
    std::vector<Row> rows_;
    std::vector<std::size_t> found_; ///< rules by line of the list
    std::size_t selectedRule_ = 0;   ///< the line of another is selected if this one is not found
};

} // namespace orrery::ui
