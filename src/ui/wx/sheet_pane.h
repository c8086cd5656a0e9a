#pragma once

#include "ui/pointing/sheet_guide.h"
#include "ui/wx/binding.h"
#include "ui/wx/pointing/sheet_view.h"

#include <wx/panel.h>

#include <string>
#include <utility>

namespace orrery::ui::wx {

/// The model sheet beside the fields of the parameter dialog, and a line about what can be done.
class SheetPane : public wxPanel {
public:
    /// Binds its controls. The guide and the binder outlive it.
    SheetPane(wxWindow& parent, wxTopLevelWindow& dialog, SheetGuide& guide, Binder& binder);

    /// What is done once, when the template is first read.
    void OnReady(Handler handler) { onReady_ = std::move(handler); }
    /// A key of the dialog, before others handle it: what is dragged is dropped, cells of fields
    /// are moved, the focus goes from the field to the sheet and back.
    void OnKey(wxKeyEvent& event);

private:
    wxWindow* AddReasons();
    void ShowGuide();
    void OnFocus(wxWindow* control);
    bool MoveField(const wxKeyEvent& event);
    void SwitchFocus();

    SheetGuide& guide_;
    Binder& binder_;
    PictureCache pictures_;
    SheetView* view_ = nullptr;
    wxStaticText* note_ = nullptr;
    Handler onReady_;
    bool isReady_ = false;      ///< the dialog has been painted
    bool isWrong_ = false;      ///< the note tells a problem
    wxWindow* field_ = nullptr; ///< the last control that had the focus before the sheet
    std::string description_;
};

} // namespace orrery::ui::wx
