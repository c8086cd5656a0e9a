#include "look/cairo/decode_picture.h"

#include "look/picture/gif.h"
#include "look/picture/picture.h"

#include <cstddef>
#include <cstdint>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <memory>
#include <string>
#include <utility>

namespace orrery::look {
namespace {

struct LoaderDeleter {
    void operator()(GdkPixbufLoader* loader) const { g_object_unref(loader); }
};
using Loader = std::unique_ptr<GdkPixbufLoader, LoaderDeleter>;

/// A loader that has read all of the bytes, or null.
Loader Load(const char* type, std::string_view bytes)
{
    Loader loader(gdk_pixbuf_loader_new_with_type(type, nullptr));
    if (!loader)
        return nullptr;
    const bool isRead =
        gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()),
                                bytes.size(), nullptr) != FALSE;
    const bool isComplete = gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE;
    return isRead && isComplete ? std::move(loader) : nullptr;
}

/// A pixel of CAIRO_FORMAT_ARGB32 from one of red, green, blue, and perhaps opacity.
std::uint32_t PixelOf(const guchar* from, bool hasAlpha)
{
    constexpr std::uint32_t most = 255;
    const std::uint32_t alpha = hasAlpha ? from[3] : most;
    const auto part = [alpha](guchar value) { return (value * alpha + most / 2) / most; };
    return alpha << 24 | part(from[0]) << 16 | part(from[1]) << 8 | part(from[2]);
}

CairoOwned<cairo_surface_t> ToSurface(const GdkPixbuf* pixels)
{
    const int width = gdk_pixbuf_get_width(pixels);
    const int height = gdk_pixbuf_get_height(pixels);
    const bool hasAlpha = gdk_pixbuf_get_has_alpha(pixels) != FALSE;
    const auto channels = static_cast<std::ptrdiff_t>(gdk_pixbuf_get_n_channels(pixels));
    CairoOwned<cairo_surface_t> surface(cairo_image_surface_create(
        hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24, width, height));
    unsigned char* const data = cairo_image_surface_get_data(surface.get());
    if (data == nullptr)
        return nullptr;
    for (std::ptrdiff_t y = 0; y < height; ++y) {
        const guchar* const from =
            gdk_pixbuf_read_pixels(pixels) + y * gdk_pixbuf_get_rowstride(pixels);
        auto* const to = reinterpret_cast<std::uint32_t*>(
            data + y * cairo_image_surface_get_stride(surface.get()));
        for (std::ptrdiff_t x = 0; x < width; ++x)
            to[x] = PixelOf(from + x * channels, hasAlpha);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

} // namespace

CairoOwned<cairo_surface_t> DecodePicture(std::string_view bytes, const PictureInfo& info)
{
    std::string firstImage;
    switch (info.type) {
    case PictureType::Gif:
        firstImage = FirstImageOfGif(bytes, info);
        bytes = firstImage;
        break;
    case PictureType::Png:
    case PictureType::Jpeg:
    case PictureType::Bmp:
        break;
    case PictureType::Tiff:
    case PictureType::Emf:
    case PictureType::Wmf:
    case PictureType::Svg:
        return nullptr;
    }
    const Loader loader = Load(std::string(PictureTypeName(info.type)).c_str(), bytes);
    const GdkPixbuf* const pixels = loader ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    return pixels == nullptr ? nullptr : ToSurface(pixels);
}

} // namespace orrery::look
