#include "robot.h"

#include "main_thread.h"
#include "native_eyes.h"
#include "ui/wx/native/text.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string_view>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dataview.h>
#include <wx/dialog.h>
#include <wx/listbox.h>
#include <wx/listctrl.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

namespace orrery::ui::wx {
namespace {

/// The key for a character on a US keyboard, and whether it needs Shift.
struct KeyStroke {
    int key;
    int modifiers;
};

KeyStroke KeyFor(char character)
{
    constexpr std::string_view plain = "`1234567890-=[]\\;',./";
    constexpr std::string_view shifted = "~!@#$%^&*()_+{}|:\"<>?";
    if (const std::size_t place = shifted.find(character); place != std::string_view::npos)
        return {plain[place], wxMOD_SHIFT};
    const bool capital = std::isupper(static_cast<unsigned char>(character)) != 0;
    return {character, capital ? wxMOD_SHIFT : wxMOD_NONE};
}

wxPoint CentreOf(const std::string& name)
{
    const wxWindow& control = FindControl(name);
    if (!control.IsShownOnScreen() || !control.IsEnabled())
        throw std::logic_error("Nobody can click on " + name + ".");
    const wxRect place = control.GetScreenRect();
    return place.GetPosition() + place.GetSize() / 2;
}

template <typename Control> Control& FindControlAs(const std::string& name)
{
    auto* const control = dynamic_cast<Control*>(&FindControl(name));
    if (control == nullptr)
        throw std::logic_error(name + " is another kind of control.");
    return *control;
}

std::string ShownText(wxWindow& control)
{
    if (const auto* const text = dynamic_cast<wxTextCtrl*>(&control))
        return FromWx(text->GetValue());
    if (const auto* const list = dynamic_cast<wxChoice*>(&control))
        return FromWx(list->GetStringSelection());
    return FromWx(control.GetLabel());
}

std::string NameOfFocus()
{
    wxWindow* const front = FrontWindow();
    const wxWindow* const focus = front == nullptr ? nullptr : FindFocus(*front);
    return focus == nullptr ? std::string() : FromWx(focus->GetName());
}

std::vector<std::string> RowsIn(const wxDataViewListCtrl& list)
{
    std::vector<std::string> rows;
    for (unsigned row = 0; row < static_cast<unsigned>(list.GetItemCount()); ++row) {
        std::string cells;
        for (unsigned column = 0; column < list.GetColumnCount(); ++column)
            cells += (column == 0 ? "" : "\t") + FromWx(list.GetTextValue(row, column));
        rows.push_back(cells);
    }
    return rows;
}

std::vector<std::string> RowsIn(const wxListView& list)
{
    std::vector<std::string> rows;
    for (int row = 0; row < list.GetItemCount(); ++row) {
        std::string cells;
        for (int column = 0; column < list.GetColumnCount(); ++column)
            cells += (column == 0 ? "" : "\t") + FromWx(list.GetItemText(row, column));
        rows.push_back(cells);
    }
    return rows;
}

std::vector<std::string> RowsIn(const wxListBox& list)
{
    std::vector<std::string> rows;
    for (const wxString& row : list.GetStrings())
        rows.push_back(FromWx(row));
    return rows;
}

bool IsModalDialog(const wxWindow* window)
{
    const auto* const dialog = dynamic_cast<const wxDialog*>(window);
    return dialog != nullptr && dialog->IsModal();
}

} // namespace

wxWindow* FrontWindow()
{
    wxWindow* front = nullptr;
    for (wxWindow* const window : wxTopLevelWindows) {
        if (window->IsShown() && (front == nullptr || IsModalDialog(window)))
            front = window; // a later dialog is above an earlier one
    }
    return front;
}

wxWindow& FindControl(const std::string& name)
{
    wxWindow* const front = FrontWindow();
    wxWindow* const control =
        front == nullptr ? nullptr : wxWindow::FindWindowByName(ToWx(name), front);
    if (control == nullptr)
        throw std::logic_error("The window in front has no " + name + ".");
    return *control;
}

Robot::Robot()
    // Its constructor accesses the windows, so it runs on the main thread. It sends events through
    // its own connection to the display, which only the test thread uses afterwards.
    : hands_(OnMain([] { return std::make_unique<wxUIActionSimulator>(); }))
{
}

Robot::~Robot() = default;

void Robot::Key(int key, int modifiers)
{
    hands_->Char(key, modifiers);
    Settle();
}

void Robot::Type(const std::string& text)
{
    for (const char character : text) {
        const KeyStroke stroke = KeyFor(character);
        hands_->Char(stroke.key, stroke.modifiers);
    }
    Settle();
}

void Robot::ClickAt(const wxPoint& screenPosition)
{
    PressAt(screenPosition, wxMOUSE_BTN_LEFT);
}

void Robot::PressAt(const wxPoint& screenPosition, int button)
{
    MoveTo(screenPosition);
    PressMouse(*hands_, button, screenPosition);
    Settle();
}

void Robot::BeginDrag(const wxPoint& from, const wxPoint& to)
{
    constexpr int steps = 6;
    MoveTo(from);
    DragMouse(*hands_, DragStep::Press, from);
    Settle();
    for (int step = 1; step <= steps; ++step) {
        DragMouse(*hands_, DragStep::Move, from + (to - from) * step / steps);
        Settle();
    }
}

void Robot::Drag(const wxPoint& from, const wxPoint& to)
{
    BeginDrag(from, to);
    ReleaseAt(to);
}

void Robot::ReleaseAt(const wxPoint& screenPosition)
{
    DragMouse(*hands_, DragStep::Release, screenPosition);
    Settle();
}

void Robot::MoveTo(const wxPoint& screenPosition)
{
    // On the main thread, because the toolkit asks a window for the scale of positions. The host
    // system may move the pointer back once, so it is moved and checked twice.
    for (int look = 0; look < 2; ++look) {
        WaitFor("the pointer", [this, screenPosition] {
            hands_->MouseMove(screenPosition);
            return IsMouseAt(screenPosition);
        });
        Settle();
    }
}

void Robot::Click(const std::string& name)
{
    ClickAt(OnMain([name] { return CentreOf(name); }));
}

void Robot::RightClick(const std::string& name)
{
    PressAt(OnMain([name] { return CentreOf(name); }), wxMOUSE_BTN_RIGHT);
}

void Robot::MoveAway()
{
    MoveTo(wxPoint());
    Settle();
}

void Robot::Enter(const std::string& name, const std::string& text)
{
    constexpr auto kGlance = std::chrono::seconds(3);
    Click(name);
    // On a busy machine a click may get lost, so check where the text will go.
    if (!HappensWithin(kGlance, [name] { return NameOfFocus() == name; }))
        Click(name);
    WaitForFocus(name);
    Key('A', wxMOD_CONTROL);
    Key(WXK_DELETE);
    Type(text);
}

void Robot::Choose(const std::string& name, const std::string& entry)
{
    const std::vector<std::string> entries = EntriesOf(name);
    const auto found = std::find(entries.begin(), entries.end(), entry);
    if (found == entries.end())
        throw std::logic_error(name + " has no entry " + entry + ".");
    Click(name);
    if (!OnMain([name] { return IsDropped(FindControlAs<wxChoice>(name)); }))
        Click(name);
    Key(WXK_HOME);
    for (auto above = entries.begin(); above != found; ++above)
        Key(WXK_DOWN);
    Key(WXK_RETURN);
}

void Robot::Answer(int key, int modifiers)
{
    WaitForMessage();
    Key(key, modifiers);
    WaitFor("the message box to go", [] { return !FindMessageBox(); });
}

std::string Robot::Front() const
{
    return OnMain([] {
        wxWindow* const front = FindMessageBox() ? nullptr : FrontWindow();
        return front == nullptr ? std::string() : FromWx(front->GetName());
    });
}

void Robot::WaitForWindow(const std::string& name) const
{
    WaitFor("window " + name, [name] {
        auto* const front = dynamic_cast<wxTopLevelWindow*>(FrontWindow());
        return front != nullptr && front->GetName() == ToWx(name) && !FindMessageBox() &&
               front->IsActive();
    });
}

std::string Robot::WaitForMessage() const
{
    WaitFor("a message box", [] {
        const auto box = FindMessageBox();
        return box && box->takesKeys;
    });
    return OnMain([] { return FindMessageBox().value().text; });
}

std::string Robot::Focused() const
{
    return OnMain([] { return NameOfFocus(); });
}

void Robot::WaitForFocus(const std::string& name) const
{
    WaitFor("the focus on " + name, [name] { return NameOfFocus() == name; });
}

std::string Robot::TextOf(const std::string& name) const
{
    return OnMain([name] { return ShownText(FindControl(name)); });
}

bool Robot::IsEnabled(const std::string& name) const
{
    return OnMain([name] { return FindControl(name).IsEnabled(); });
}

bool Robot::IsShown(const std::string& name) const
{
    return OnMain([name] { return FindControl(name).IsShownOnScreen(); });
}

bool Robot::IsChecked(const std::string& name) const
{
    return OnMain([name] { return FindControlAs<wxCheckBox>(name).GetValue(); });
}

std::vector<std::string> Robot::EntriesOf(const std::string& name) const
{
    return OnMain([name] {
        std::vector<std::string> entries;
        for (const wxString& entry : FindControlAs<wxChoice>(name).GetStrings())
            entries.push_back(FromWx(entry));
        return entries;
    });
}

std::vector<std::string> Robot::RowsOf(const std::string& name) const
{
    return OnMain([name] {
        wxWindow& list = FindControl(name);
        if (const auto* const columns = dynamic_cast<wxDataViewListCtrl*>(&list))
            return RowsIn(*columns);
        if (const auto* const report = dynamic_cast<wxListView*>(&list))
            return RowsIn(*report);
        return RowsIn(FindControlAs<wxListBox>(name));
    });
}

} // namespace orrery::ui::wx
