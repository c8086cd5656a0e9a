#pragma once

#include <wx/toplevel.h>

#include <string>

namespace orrery::ui::wx {

/// Restores a window's last size, and its position if that is still on a screen, from the section
/// "Windows" of the settings file, under the window's name.
void RestorePlacement(wxTopLevelWindow& window, const std::string& settingsFile);
/// Saves the window's size and position. Ignores a settings file that cannot be written.
void SavePlacement(const wxTopLevelWindow& window, const std::string& settingsFile);

/// What is stored there of a part of a window; empty if nothing is.
std::string ReadPlacement(const std::string& part, const std::string& settingsFile);
/// Stores it. Ignores a settings file that cannot be written.
void WritePlacement(const std::string& part, const std::string& placement,
                    const std::string& settingsFile);

} // namespace orrery::ui::wx
