#pragma once

#include <optional>
#include <string>
#include <vector>

class wxChoice;
class wxPoint;
class wxWindow;

/// What a user sees but the portable toolkit does not tell. Main thread only.
namespace orrery::ui::wx {

/// A message box, which some systems make themselves: the toolkit does not know it as a window.
struct MessageBox {
    std::string title;
    std::string text;
    std::vector<std::string> buttons; ///< captions without mnemonics
    bool takesKeys = false;
};

/// The message box in front.
std::optional<MessageBox> FindMessageBox();

/// The control of this top-level window that takes keys, or nullptr. The toolkit's own answer
/// leaves out drop-down lists.
wxWindow* FindFocus(wxWindow& topLevel);

/// Whether the entries of a drop-down list are on the screen, as far as a click may leave them out.
bool IsDropped(const wxChoice& choice);

/// Whether keys or clicks wait that the program has not seen yet, as far as posted functions
/// overtake them.
bool IsInputPending();

/// Lets the main thread see that a function was posted, in the system's own event loops, too. From
/// any thread.
void WakeMainThread();

/// Whether the pointer has come to that place of the screen, where it may be slow to do so.
bool IsMouseAt(const wxPoint& screenPosition);

} // namespace orrery::ui::wx
