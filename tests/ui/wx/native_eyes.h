#pragma once

#include <optional>
#include <string>
#include <vector>

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

} // namespace orrery::ui::wx
