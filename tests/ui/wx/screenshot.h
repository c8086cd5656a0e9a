#pragma once

#include <filesystem>

namespace orrery::ui::wx {

/// Writes a picture (PNG) of the window in front, with its frame, or of the whole screen.
/// Throws where the system's tool for that fails.
void PictureOfFront(const std::filesystem::path& file);
void PictureOfScreen(const std::filesystem::path& file);

} // namespace orrery::ui::wx
