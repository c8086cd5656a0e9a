#pragma once

#include "ui/desktop.h"

#include <string>

namespace orrery::ui::wx {

/// Opens a page of the help, such as "main", in the form that the system reads. The folder of the
/// help ends in a separator. A failure is reported.
void OpenHelp(const std::string& folder, const std::string& page, Desktop& desktop);

} // namespace orrery::ui::wx
