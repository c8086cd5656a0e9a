// Headers of pictures end in a finite size, or in nothing, and a picture that is shown is small
// enough for it.

#include "require.h"

#include "look/picture/picture.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orrery;
    using fuzz::Require;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const auto info = look::ReadPictureInfo(bytes);
    if (!info) {
        Require(look::ReasonNotShown(bytes).has_value());
        return 0;
    }
    Require(!look::PictureTypeName(info->type).empty());
    Require(std::isfinite(info->width) && info->width >= 0);
    Require(std::isfinite(info->height) && info->height >= 0);
    Require(std::isfinite(info->resolutionX) && std::isfinite(info->resolutionY));
    if (!look::ReasonNotShown(bytes))
        Require(info->width * info->height <= look::kMostPixels);
    return 0;
}
