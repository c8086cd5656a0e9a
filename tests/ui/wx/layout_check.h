#pragma once

#include <string>
#include <vector>

class wxWindow;

namespace orrery::ui::wx {

/// Problems in the layout of a window, one sentence each: clipped captions, controls that extend
/// beyond their parent, overlapping controls. Main thread only.
std::vector<std::string> LayoutProblems(wxWindow& window);

} // namespace orrery::ui::wx
