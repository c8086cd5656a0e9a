#include "native_eyes.h"

#include "main_thread.h"
#include "robot.h"
#include "ui/wx/native/text.h"

#include <gtk/gtk.h>
#include <wx/button.h>
#include <wx/msgdlg.h>
#include <wx/statbmp.h>
#include <wx/uiaction.h>

#include <wx/generic/msgdlgg.h>

namespace orrery::ui::wx {
namespace {

/// The innermost window whose widget contains the given one.
wxWindow* WindowAround(GtkWidget* widget, wxWindow& window)
{
    for (wxWindow* const child : window.GetChildren()) {
        if (wxWindow* const found = WindowAround(widget, *child))
            return found;
    }
    GtkWidget* const own = window.GetHandle();
    return widget == own || gtk_widget_is_ancestor(widget, own) ? &window : nullptr;
}

Sign SignOf(const wxGenericMessageDialog& box)
{
    bool isShown = false;
    for (const wxWindow* const child : box.GetChildren()) {
        const auto* const picture = dynamic_cast<const wxStaticBitmap*>(child);
        isShown =
            isShown || (picture != nullptr && picture->IsShown() && picture->GetBitmap().IsOk());
    }
    if (!isShown)
        return Sign::None;
    switch (box.GetMessageDialogStyle() & wxICON_MASK) {
    case wxICON_EXCLAMATION:
        return Sign::Exclamation;
    case wxICON_QUESTION:
        return Sign::Question;
    default:
        return Sign::Other;
    }
}

} // namespace

// On this system message boxes are dialogs of the toolkit.
std::optional<MessageBox> FindMessageBox()
{
    auto* const box = dynamic_cast<wxGenericMessageDialog*>(FrontWindow());
    if (box == nullptr)
        return std::nullopt;
    MessageBox seen{
        FromWx(box->GetTitle()), FromWx(box->GetMessage()), {}, box->IsActive(), SignOf(*box)};
    for (const wxWindow* const child : box->GetChildren()) {
        if (const auto* const button = dynamic_cast<const wxButton*>(child))
            seen.buttons.push_back(FromWx(button->GetLabelText()));
    }
    return seen;
}

wxWindow* FindFocus(wxWindow& topLevel)
{
    GtkWidget* const focus = gtk_window_get_focus(GTK_WINDOW(topLevel.GetHandle()));
    return focus == nullptr ? nullptr : WindowAround(focus, topLevel);
}

// A click always shows the entries.
bool IsDropped(const wxChoice& /*choice*/)
{
    return true;
}

// Posted functions run after all events.
bool IsInputPending()
{
    return false;
}

// All event loops belong to the toolkit.
void WakeMainThread() {}

void PressMouse(wxUIActionSimulator& hands, int button, const wxPoint& /*screenPosition*/)
{
    hands.MouseClick(button);
}

void DragMouse(wxUIActionSimulator& hands, DragStep step, const wxPoint& screenPosition)
{
    if (step == DragStep::Press)
        hands.MouseDown(wxMOUSE_BTN_LEFT);
    else if (step == DragStep::Release)
        hands.MouseUp(wxMOUSE_BTN_LEFT);
    else
        OnMain(
            [&] { return hands.MouseMove(screenPosition); }); // which asks a window for its scale
}

// Moves and clicks come in order.
bool IsMouseAt(const wxPoint& /*screenPosition*/)
{
    return true;
}

} // namespace orrery::ui::wx
