#pragma once

#include "ui/form.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orrery::ui {

/// The tip of the day (frmTip).
class TipForm : public Form {
public:
    /// Does what `Form_Load` does. Both are whole paths; neither file need exist.
    TipForm(std::string settingsFile, const std::string& tipsFile);

    /// Adds the tips of a file, one a line, and shows one of them by chance. False when there is no
    /// file.
    bool LoadTips(const std::string& path);
    void PickFirstTip();
    /// Shows tip number `currentTip`; without tips the text stays.
    void DisplayCurrentTip();
    /// Shows the next tip, after the last one the first.
    void AdvanceTip();

    /// Writes the setting at once. Throws Error(FileNotWritable); the box then shows the setting as
    /// it was.
    void chkLoadTipsAtStartup_Click();
    void cmdNextTip_Click() { AdvanceTip(); }
    void cmdOK_Click() { Close(); }

    Label lblDidYouKnow{"lblDidYouKnow", "Did you know..."};
    Label lblTipText{"lblTipText"};
    CheckBox chkLoadTipsAtStartup{"chkLoadTipsAtStartup", "&Show Tips at Startup"};
    Button cmdNextTip{"cmdNextTip", "&Next Tip"};
    Button cmdOK{"cmdOK", "&Close"};

    std::vector<std::string> tipList; ///< lines end in CR LF inside a tip
    std::int32_t currentTip = 0;      ///< [1:count]; 0 before the first

private:
    const std::string settingsFile_;
};

} // namespace orrery::ui
