#pragma once

#include <string>
#include <vector>

class wxWindow;

namespace orrery::ui::wx {

/// What is wrong with the layout of a window, one sentence each: a caption that has less room than
/// it needs, a control that sticks out of its parent, two that overlap. Main thread only.
std::vector<std::string> LayoutProblems(wxWindow& window);

} // namespace orrery::ui::wx
