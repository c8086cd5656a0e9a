#pragma once

#include <wx/toplevel.h>

#include <string>

namespace orrery::ui::wx {

/// Puts a window where it was when it was closed last, as long as a screen shows that place. The
/// settings file has it in the section "Windows" under the window's name.
void RestorePlace(wxTopLevelWindow& window, const std::string& settingsFile);
/// Notes the window's place. A settings file that cannot be written is no reason to complain.
void KeepPlace(const wxTopLevelWindow& window, const std::string& settingsFile);

} // namespace orrery::ui::wx
