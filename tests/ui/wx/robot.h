#pragma once

#include <memory>
#include <string>
#include <vector>
#include <wx/event.h>

class wxPoint;
class wxUIActionSimulator;
class wxWindow;

namespace orrery::ui::wx {

/// The user: hands on the keyboard and the mouse, eyes on the window in front. Lives on a test's
/// thread. Controls are named as their windows are; a name is looked for in the window in front.
/// Whatever cannot be done throws.
class Robot {
public:
    Robot();
    ~Robot();

    // Hands.
    void Key(int key, int modifiers = wxMOD_NONE);
    /// Characters of a keyboard of the United States.
    void Type(const std::string& text);
    void Click(const std::string& name);
    void ClickAt(const wxPoint& screenPosition);
    /// The mouse into a corner of the screen, where it highlights nothing.
    void MoveAway();
    /// Into a text box, over what is there.
    void Enter(const std::string& name, const std::string& text);
    /// An entry of a drop-down list.
    void Choose(const std::string& name, const std::string& entry);
    /// Answers the message box in front with the button of that mnemonic or key.
    void Answer(int key, int modifiers = wxMOD_NONE);

    // Eyes.
    /// Name of the window in front that takes keys; empty when it is a message box.
    std::string Front() const;
    /// Waits until the window of that name is in front and takes keys.
    void WaitForWindow(const std::string& name) const;
    /// Waits for a message box and gives its text.
    std::string WaitForMessage() const;
    std::string Focused() const;
    void WaitForFocus(const std::string& name) const;
    /// What the control says: a text box its text, a list its selection, else the label.
    std::string TextOf(const std::string& name) const;
    bool IsEnabled(const std::string& name) const;
    bool IsShown(const std::string& name) const;
    bool IsChecked(const std::string& name) const;
    std::vector<std::string> EntriesOf(const std::string& name) const;
    /// The rows of a list with columns; a tab between two cells.
    std::vector<std::string> RowsOf(const std::string& name) const;

private:
    void MoveTo(const wxPoint& screenPosition);

    std::unique_ptr<wxUIActionSimulator> hands_;
};

/// The window of that name in the window in front. Main thread only; throws when there is none.
wxWindow& FindControl(const std::string& name);
/// The top-level window in front, or nullptr. Main thread only.
wxWindow* FrontWindow();

} // namespace orrery::ui::wx
