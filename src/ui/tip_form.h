#pragma once

#include "ui/form.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::ui {

/// The tip of the day (frmTip).
class TipForm : public Form {
public:
    /// Also does what `Form_Load` should. Both are full paths; neither file need exist.
    TipForm(std::string settingsFile, const std::string& tipsFile);

    /// Adds the tips of a file, one per line, and shows a random one. False if the file cannot be
    /// read.
    bool LoadTips(const std::string& path);
    void PickFirstTip();
    /// Shows tip number `currentTip`; without tips the text stays unchanged.
    void DisplayCurrentTip();
    /// Shows the next tip; the first one follows the last.
    void AdvanceTip();

    /// Saves the setting at once. Throws Error(FileNotWritable); the check box then returns to the
    /// old setting.
    void chkLoadTipsAtStartup_Click();
    void cmdNextTip_Click() { AdvanceTip(); }
    void cmdOK_Click() { Close(); }

    Label lblDidYouKnow{"lblDidYouKnow", "Did you know..."};
    Label lblTipText{"lblTipText"};
    CheckBox chkLoadTipsAtStartup{"chkLoadTipsAtStartup", "&Show Tips at Startup"};
    Button cmdNextTip{"cmdNextTip", "&Next Tip"};
    Button cmdOK{"cmdOK", "&Close"};

    std::vector<std::string> tipList; ///< line breaks inside a tip are CR LF
    std::int32_t currentTip = 0;      ///< [1:count]; 0 before the first tip is shown

private:
    const std::string settingsFile_;
};

} // namespace orrery::ui
