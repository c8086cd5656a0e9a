#pragma once

#include "app/import_source.h"
#include "ui/form.h"

#include <optional>
#include <string>

namespace orrery::ui {

/// What is imported, and where it goes.
struct ImportTask {
    const app::ImportSource& source; ///< must outlive the form
    std::string name;                ///< of the file that it comes from
    std::string ownFolder;           ///< of own holiday files; ends in a separator
    int year = 0;                    ///< events that come again give days in ten years from it
};

/// The dialog that shows what was found in a file of another program before it becomes a holiday
/// file (frmImport).
class ImportForm : public Form {
public:
    /// Throws Error if the file cannot be read.
    explicit ImportForm(ImportTask task);

    /// The user chose another order of dates.
    void cboDateOrder_Click();
    /// The user typed years: takes the events of these years only.
    void ShowYears();
    /// The user typed another name, or allowed to replace the file.
    void ShowTarget();
    /// Closes the dialog if the file can be written; else tells why not and moves the focus there.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }

    /// Where the file goes.
    std::string TargetFile() const;
    const exchange::ImportedRules& Rules() const { return rules_; }

    Label lblKind{"lblKind"}; ///< what was found
    Label lblDateOrder{"lblDateOrder", "&Dates:"};
    ComboBox cboDateOrder{"cboDateOrder"}; ///< visible if there are several
    Label lblYears{"lblYears", "&Years:"};
    TextBox txtYears{"txtYears"};
    Label lblCounts{"lblCounts"};
    Label lblEvents{"lblEvents", "First &Events:"};
    TextBox txtEvents{"txtEvents"}; ///< only shows
    Label lblPassedOver{"lblPassedOver", "&Passed Over:"};
    TextBox txtPassedOver{"txtPassedOver"}; ///< only shows
    Label lblTarget{"lblTarget", "&Name of the List:"};
    TextBox txtTarget{"txtTarget"};
    CheckBox chkReplace{"chkReplace",
                        "&Replace the List of That Name"}; ///< enabled if there is one
    Label lblProblem{"lblProblem"};                        ///< what is wrong
    Button cmdOK{"cmdOK", "&OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    struct Problem {
        std::string sentence;
        const Control* field;
    };

    void FillOrders();
    /// The years that are typed; nothing if the text is empty, or wrong.
    std::optional<exchange::Years> TypedYears() const;
    bool AreYearsWrong() const;
    void Read();
    void ShowRules();
    void ShowPassedOver();
    std::string FirstEvents() const;
    std::optional<Problem> FindProblem() const;
    void ShowProblem();

    const ImportTask task_;
    exchange::Calendar calendar_;
    exchange::ImportedRules rules_;
    std::string tooMany_; ///< what is wrong with the rules as a whole
};

} // namespace orrery::ui
