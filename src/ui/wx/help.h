#pragma once

#include "ui/desktop.h"

#include <string>

namespace orrery::ui::wx {

/// Opens a help page, such as "main", in the system's help format. The help folder ends in a
/// separator. Reports a failure.
void OpenHelp(const std::string& folder, const std::string& page, Desktop& desktop);

} // namespace orrery::ui::wx
