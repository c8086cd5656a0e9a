#pragma once

#include <cstddef>
#include <filesystem>

namespace orrery::ui::wx {

/// Writes a picture (PNG) of the window in front, with its frame, or of the whole screen.
/// Throws where the system's tool for that fails.
void PictureOfFront(const std::filesystem::path& file);
void PictureOfScreen(const std::filesystem::path& file);
/// How many colours such a picture has, counted to a little more than `most`; 0 when it is none.
/// Main thread only.
std::size_t ColoursIn(const std::filesystem::path& file, std::size_t most);

} // namespace orrery::ui::wx
