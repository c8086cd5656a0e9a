#pragma once

#include "look/picture/picture_info.h"

#include <optional>
#include <string_view>

/// Readers of the single kinds: nothing for what is not of the kind, or damaged.
namespace orrery::look {

std::optional<PictureInfo> ReadPng(std::string_view bytes);
std::optional<PictureInfo> ReadJpeg(std::string_view bytes);
std::optional<PictureInfo> ReadGif(std::string_view bytes);
std::optional<PictureInfo> ReadBmp(std::string_view bytes);
std::optional<PictureInfo> ReadTiff(std::string_view bytes);
std::optional<PictureInfo> ReadEmf(std::string_view bytes);
std::optional<PictureInfo> ReadWmf(std::string_view bytes);
std::optional<PictureInfo> ReadSvg(std::string_view bytes);

} // namespace orrery::look
