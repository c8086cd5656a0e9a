#include "look/cairo/decode_picture.h"

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>
#include <shlwapi.h>
// After the interfaces.
#include <gdiplus.h>

#include <memory>

namespace orrery::look {
namespace {

struct ReleaseStream {
    void operator()(IStream* stream) const { stream->Release(); }
};

/// Keeps GDI+ ready.
class GdiPlus {
public:
    GdiPlus()
    {
        const Gdiplus::GdiplusStartupInput input;
        isReady_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiPlus()
    {
        if (isReady_)
            Gdiplus::GdiplusShutdown(token_);
    }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;
    bool IsReady() const { return isReady_; }

private:
    ULONG_PTR token_ = 0;
    bool isReady_ = false;
};

/// A surface whose pixels are those of the bitmap: both keep them alike, multiplied by the opacity.
CairoOwned<cairo_surface_t> ToSurface(Gdiplus::Bitmap& bitmap)
{
    const auto width = static_cast<int>(bitmap.GetWidth());
    const auto height = static_cast<int>(bitmap.GetHeight());
    const bool isOpaque = !Gdiplus::IsAlphaPixelFormat(bitmap.GetPixelFormat()) &&
                          !Gdiplus::IsIndexedPixelFormat(bitmap.GetPixelFormat());
    CairoOwned<cairo_surface_t> surface(cairo_image_surface_create(
        isOpaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, width, height));
    Gdiplus::BitmapData data;
    data.Width = static_cast<UINT>(width);
    data.Height = static_cast<UINT>(height);
    data.Stride = cairo_image_surface_get_stride(surface.get());
    data.PixelFormat = PixelFormat32bppPARGB;
    data.Scan0 = cairo_image_surface_get_data(surface.get());
    data.Reserved = 0;
    const Gdiplus::Rect whole(0, 0, width, height);
    constexpr UINT readInto = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
    if (data.Scan0 == nullptr ||
        bitmap.LockBits(&whole, readInto, PixelFormat32bppPARGB, &data) != Gdiplus::Ok)
        return nullptr;
    bitmap.UnlockBits(&data);
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

} // namespace

CairoOwned<cairo_surface_t> DecodePicture(std::string_view bytes, const PictureInfo& info)
{
    const GdiPlus library;
    const std::unique_ptr<IStream, ReleaseStream> stream(SHCreateMemStream(
        reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())));
    if (!library.IsReady() || !stream)
        return nullptr;
    Gdiplus::Bitmap picture(stream.get());
    if (picture.GetLastStatus() != Gdiplus::Ok || picture.GetWidth() > info.width ||
        picture.GetHeight() > info.height)
        return nullptr;
    return ToSurface(picture);
}

} // namespace orrery::look
