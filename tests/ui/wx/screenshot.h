#pragma once

#include <cstddef>
#include <filesystem>
#include <wx/gdicmn.h>

namespace orrery::ui::wx {

/// Writes a picture (PNG) of the window in front, with its frame, or of the whole screen.
/// Throws if the system's tool fails.
void CaptureFrontWindow(const std::filesystem::path& file);
void CaptureScreen(const std::filesystem::path& file);
/// Number of colours in such a picture, or in a part of it, counted to a little more than `most`; 0
/// if it is not a picture. Main thread only.
std::size_t CountColours(const std::filesystem::path& file, std::size_t most,
                         const wxRect& part = {});

} // namespace orrery::ui::wx
