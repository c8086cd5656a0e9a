#pragma once

#include "holidays/language/own_day.h"
#include "ui/form.h"

#include <optional>
#include <string>

namespace orrery::ui {

/// The dialog in which the user adds or changes a day of their own (frmOwnDay).
class OwnDayForm : public Form {
public:
    /// Shows a day, or an empty one. With a year, its next date from then on is told.
    OwnDayForm(const std::optional<holidays::OwnDay>& day, std::optional<int> year);

    /// The user chose another kind of day: shows what it needs.
    void cboKind_Click();
    /// The user typed or chose anything: tells the date, or what is wrong with it.
    void ShowDate();
    /// Closes the dialog if the day can be added; else tells why not and moves the focus there.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }

    /// The day as it is entered.
    holidays::OwnDay Day() const;

    Label lblName{"lblName", "&Name:"};
    TextBox txtName{"txtName"};
    Label lblKind{"lblKind", "&Kind:"};
    ComboBox cboKind{"cboKind"};
    // Each is visible where the kind needs it.
    Label lblOrdinal{"lblOrdinal", "Whic&h:"};
    ComboBox cboOrdinal{"cboOrdinal"};
    Label lblWeekday{"lblWeekday", "&Weekday:"};
    ComboBox cboWeekday{"cboWeekday"}; ///< from Monday on
    Label lblDay{"lblDay", "&Day:"};
    TextBox txtDay{"txtDay"};
    Label lblMonth{"lblMonth", "&Month:"};
    ComboBox cboMonth{"cboMonth"};
    Label lblYear{"lblYear"};
    TextBox txtYear{"txtYear"};
    Label lblLastDay{"lblLastDay", "&Last Day:"};
    TextBox txtLastDay{"txtLastDay"};
    Label lblLastMonth{"lblLastMonth", "Mon&th:"};
    ComboBox cboLastMonth{"cboLastMonth"};
    Label lblLastYear{"lblLastYear", "Yea&r:"};
    TextBox txtLastYear{"txtLastYear"};
    Label lblDate{"lblDate"}; ///< the date, or what is wrong
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    struct Problem {
        std::string sentence;
        const Control* field;
    };

    void FillLists();
    void Show(const holidays::OwnDay& day);
    std::optional<Problem> FindProblem() const;
    /// What is typed into a field that must be a number.
    std::optional<Problem> FindTextProblem() const;

    const std::optional<int> year_;
};

} // namespace orrery::ui
