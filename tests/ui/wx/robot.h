#pragma once

#include <memory>
#include <string>
#include <vector>
#include <wx/event.h>

class wxPoint;
class wxUIActionSimulator;
class wxWindow;

namespace orrery::ui::wx {

/// Simulates the user: types, moves the mouse, looks at the window in front. Lives on a test's
/// thread. Controls are identified by their windows' names in the window in front. Throws if an
/// action is impossible.
class Robot {
public:
    Robot();
    ~Robot();

    // Input.
    void Key(int key, int modifiers = wxMOD_NONE);
    /// Types characters of a US keyboard.
    void Type(const std::string& text);
    void Click(const std::string& name);
    void ClickAt(const wxPoint& screenPosition);
    /// Presses the left button at a place and moves to another, in steps.
    void BeginDrag(const wxPoint& from, const wxPoint& to);
    /// The same, and releases the button there.
    void Drag(const wxPoint& from, const wxPoint& to);
    void ReleaseAt(const wxPoint& screenPosition);
    /// Opens the menu of a control.
    void RightClick(const std::string& name);
    /// Moves the mouse to a corner of the screen, where it highlights nothing.
    void MoveAway();
    /// Types into a text box, replacing its text.
    void Enter(const std::string& name, const std::string& text);
    /// Selects an entry of a drop-down list.
    void Choose(const std::string& name, const std::string& entry);
    /// Answers the message box in front with that mnemonic or key.
    void Answer(int key, int modifiers = wxMOD_NONE);

    // Output.
    /// Name of the window in front that has the keyboard; empty if it is a message box.
    std::string Front() const;
    /// Waits until the window with that name is in front and has the keyboard.
    void WaitForWindow(const std::string& name) const;
    /// Waits for a message box and returns its text.
    std::string WaitForMessage() const;
    std::string Focused() const;
    void WaitForFocus(const std::string& name) const;
    /// The text of a text box, the selection of a list, else the control's label.
    std::string TextOf(const std::string& name) const;
    bool IsEnabled(const std::string& name) const;
    bool IsShown(const std::string& name) const;
    bool IsChecked(const std::string& name) const;
    std::vector<std::string> EntriesOf(const std::string& name) const;
    /// The rows of a list with columns, with a tab between cells.
    std::vector<std::string> RowsOf(const std::string& name) const;

private:
    void PressAt(const wxPoint& screenPosition, int button);
    void MoveTo(const wxPoint& screenPosition);

    std::unique_ptr<wxUIActionSimulator> hands_;
};

/// The control with that name in the window in front. Main thread only; throws if there is none.
wxWindow& FindControl(const std::string& name);
/// The top-level window in front, or nullptr. Main thread only.
wxWindow* FrontWindow();

} // namespace orrery::ui::wx
