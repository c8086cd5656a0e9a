#include "look/cairo/pictures.h"

#include "look/cairo/decode_picture.h"
#include "look/picture/picture.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace orrery::look {
namespace {

/// A surface as large as the decoded picture with a copy of the bytes, which the document takes:
/// its own pixels are never touched, and so take no memory.
CairoOwned<cairo_surface_t> JpegSurface(cairo_surface_t& decoded, std::string_view bytes)
{
    CairoOwned<cairo_surface_t> surface(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, cairo_image_surface_get_width(&decoded),
                                   cairo_image_surface_get_height(&decoded)));
    auto copy = std::make_unique<std::string>(bytes);
    const auto* const data = reinterpret_cast<const unsigned char*>(copy->data());
    const auto release = [](void* text) { delete static_cast<std::string*>(text); };
    if (cairo_surface_set_mime_data(surface.get(), CAIRO_MIME_TYPE_JPEG, data,
                                    static_cast<unsigned long>(bytes.size()), release,
                                    copy.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    static_cast<void>(copy.release()); // the surface deletes it
    return surface;
}

CairoOwned<cairo_surface_t> MakeSurface(std::string_view bytes)
{
    const auto info = ReadRasterInfo(bytes);
    if (!info || bytes.size() > kLargestPicture || info->width * info->height > kMostPixels)
        return nullptr;
    CairoOwned<cairo_surface_t> surface = DecodePicture(bytes, *info);
    if (!surface || cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS)
        return nullptr;
    if (info->isCommonJpeg)
        return JpegSurface(*surface, bytes);
    return surface;
}

} // namespace

cairo_surface_t* CairoPictures::Find(std::string_view bytes)
{
    const auto known = surfaces_.find(bytes);
    if (known != surfaces_.end())
        return known->second.get();
    return surfaces_.emplace(std::string(bytes), MakeSurface(bytes)).first->second.get();
}

} // namespace orrery::look
