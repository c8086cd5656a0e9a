#include "ui/wx/look/picture_cache.h"

#include "look/picture/picture.h"
#include "ui/wx/look/decode_picture.h"

#include <algorithm>
#include <cmath>

namespace orrery::ui::wx {
namespace {

/// Larger pictures are kept smaller: no screen shows more.
constexpr double kMostKeptPixels = 8e6;
/// When all pictures together have more, they are decoded again.
constexpr double kMostCachedPixels = 64e6;
constexpr std::size_t kMostEntries = 4096;

void Reduce(wxImage& image)
{
    const double pixels = static_cast<double>(image.GetWidth()) * image.GetHeight();
    if (pixels <= kMostKeptPixels)
        return;
    const double scale = std::sqrt(kMostKeptPixels / pixels);
    const auto side = [scale](int length) {
        return std::clamp(static_cast<int>(length * scale), 1, static_cast<int>(kMostKeptPixels));
    };
    image.Rescale(side(image.GetWidth()), side(image.GetHeight()), wxIMAGE_QUALITY_NEAREST);
}

} // namespace

PictureCache::Entry PictureCache::Decode(wxGraphicsContext& context, std::string_view bytes)
{
    const auto info = look::ReadPictureInfo(bytes);
    if (!info || look::ReasonNotShown(bytes))
        return {};
    wxImage image = DecodePicture(bytes, *info);
    if (!image.IsOk())
        return {};
    Reduce(image);
    if (image.HasMask())
        image.InitAlpha();
    return {context.CreateBitmapFromImage(image),
            static_cast<double>(image.GetWidth()) * image.GetHeight()};
}

const wxGraphicsBitmap* PictureCache::Find(wxGraphicsContext& context, std::string_view bytes)
{
    const std::pair key(bytes.data(), bytes.size());
    auto found = entries_.find(key);
    if (found == entries_.end()) {
        Entry entry = Decode(context, bytes);
        if (pixels_ + entry.pixels > kMostCachedPixels || entries_.size() >= kMostEntries)
            Clear();
        pixels_ += entry.pixels;
        found = entries_.emplace(key, std::move(entry)).first;
    }
    return found->second.bitmap.IsNull() ? nullptr : &found->second.bitmap;
}

void PictureCache::Clear()
{
    entries_.clear();
    pixels_ = 0;
}

} // namespace orrery::ui::wx
