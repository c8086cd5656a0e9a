#pragma once

#include "look/canvas/canvas.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace orrery::look {

inline constexpr int kSampleWidth = 480;
inline constexpr int kSampleHeight = 200;

/// A drawing that shows what canvases must do.
struct Sample {
    std::string name;
    std::function<void(Canvas&)> draw;
};

/// The folder has the pictures sample.png, sample.jpeg, sample.gif and sample.bmp.
std::vector<Sample> Samples(const std::filesystem::path& folder);

} // namespace orrery::look
