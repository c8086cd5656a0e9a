#pragma once

#include "ui/main/main_form.h"
#include "ui/wx/binding.h"
#include "ui/wx/preview/page_strip.h"
#include "ui/wx/preview/page_view.h"

#include <wx/panel.h>
#include <wx/timer.h>

#include <chrono>
#include <functional>

namespace orrery::ui::wx {

/// The pages of the calendar beside the controls of the main window: a strip of small ones, a large
/// one, and a line about what will go wrong. Everything is painted on the main thread when it is
/// idle.
class PreviewPane : public wxPanel {
public:
    /// Binds its controls. The form and the binder outlive it.
    PreviewPane(wxWindow& parent, MainForm& form, Binder& binder);

    /// The form may have changed: looks again when there is time.
    void Outdate();
    /// Prints the pages, as the user says in the system's dialog.
    void Print();

private:
    void OnIdle(wxIdleEvent& event);
    void LookAgain();
    void ShowState();
    void Turn(std::ptrdiff_t pages);
    void Select(std::ptrdiff_t page);

    MainForm& form_;
    Binder& binder_;
    PictureCache pictures_;
    PageStrip* strip_ = nullptr;
    PageView* view_ = nullptr;
    bool isOutdated_ = false;
    std::chrono::milliseconds lastUpdate_{0}; ///< how long it took
    wxTimer timer_;
};

} // namespace orrery::ui::wx
