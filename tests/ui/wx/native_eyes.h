#pragma once

#include <optional>
#include <string>
#include <vector>

class wxChoice;
class wxPoint;
class wxUIActionSimulator;
class wxWindow;

/// What a user sees and does but the portable toolkit does not offer. Main thread only, but for
/// what says otherwise.
namespace orrery::ui::wx {

/// The picture in a message box.
enum class Sign { None, Exclamation, Question, Other };

/// A message box. On some systems it is the system's own and not a window of the toolkit.
struct MessageBox {
    std::string title;
    std::string text;
    std::vector<std::string> buttons; ///< captions without mnemonics
    bool takesKeys = false;
    Sign sign = Sign::None;
};

/// The message box in front.
std::optional<MessageBox> FindMessageBox();

/// The control of a top-level window with the keyboard focus, or nullptr. The toolkit's own
/// function misses drop-down lists.
wxWindow* FindFocus(wxWindow& topLevel);

/// Whether the entries of a drop-down list are visible. True on systems where a click always shows
/// them.
bool IsDropped(const wxChoice& choice);

/// Whether keys or clicks are waiting to be handled. False on systems where posted functions never
/// overtake them.
bool IsInputPending();

/// Makes the main thread run posted functions, also in the system's own event loops. From any
/// thread.
void WakeMainThread();

/// Presses and releases a mouse button at that position, where the pointer already is. On systems
/// that may move it back at any time, the position goes with the press in one event. From the
/// robot's thread.
void PressMouse(wxUIActionSimulator& hands, int button, const wxPoint& screenPosition);

/// What a drag consists of.
enum class DragStep { Press, Move, Release };

/// A step of dragging with the left mouse button, at that position, where the pointer already is
/// but for moves. From the robot's thread.
void DragMouse(wxUIActionSimulator& hands, DragStep step, const wxPoint& screenPosition);

/// Whether the pointer has reached that position. True on systems where moves and clicks come in
/// order.
bool IsMouseAt(const wxPoint& screenPosition);

} // namespace orrery::ui::wx
