#pragma once

#include "ui/main/main_form.h"
#include "ui/wx/wx_desktop.h"

namespace orrery::ui::wx {

/// Makes captions about 40 % longer, as translations do.
void Lengthen(MainForm& form);

/// Shows dialogs, optionally with longer captions.
class TestDesktop : public WxDesktop {
public:
    using WxDesktop::WxDesktop;

    void ShowModal(ParameterForm& form) override;
    void ShowModal(HolidayForm& form) override;
    void ShowModal(CountryForm& form) override;
    void ShowModal(OwnDayForm& form) override;
    void ShowModal(ImportForm& form) override;
    void ShowModal(TipForm& form) override;
    void ShowModal(AboutForm& form) override;

    bool longCaptions = false;
};

} // namespace orrery::ui::wx
