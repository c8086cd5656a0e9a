#include "ui/wx/look/decode_picture.h"

#include <windows.h>
// After windows.h, which it needs.
#include <objidl.h>
#include <shlwapi.h>
// After the interfaces.
#include <gdiplus.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace orrery::ui::wx {
namespace {

/// Vectors are drawn in so many times their size, so that they may be enlarged.
constexpr double kVectorScale = 2;
constexpr double kLargestSide = 4096; ///< pixels, of vectors

struct ReleaseStream {
    void operator()(IStream* stream) const { stream->Release(); }
};

/// Keeps GDI+ ready. The toolkit does so, too, but not from the program's beginning.
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

bool IsVector(look::PictureType type)
{
    return type == look::PictureType::Emf || type == look::PictureType::Wmf;
}

wxImage ToImage(Gdiplus::Bitmap& bitmap)
{
    const auto width = static_cast<int>(bitmap.GetWidth());
    const auto height = static_cast<int>(bitmap.GetHeight());
    const Gdiplus::Rect whole(0, 0, width, height);
    Gdiplus::BitmapData data;
    if (bitmap.LockBits(&whole, Gdiplus::ImageLockModeRead, PixelFormat32bppARGB, &data) !=
        Gdiplus::Ok)
        return {};
    wxImage image(width, height, false);
    image.SetAlpha();
    for (int y = 0; y < height; ++y) {
        const auto* const row = static_cast<const std::uint8_t*>(data.Scan0) +
                                static_cast<std::ptrdiff_t>(y) * data.Stride;
        for (int x = 0; x < width; ++x) {
            const std::uint8_t* const pixel = row + 4 * static_cast<std::ptrdiff_t>(x);
            image.SetRGB(x, y, pixel[2], pixel[1], pixel[0]);
            image.SetAlpha(x, y, pixel[3]);
        }
    }
    bitmap.UnlockBits(&data);
    return image;
}

/// The picture as pixels, in the size that its headers tell.
wxImage Paint(Gdiplus::Image& picture, const look::PictureInfo& info)
{
    const double scale = IsVector(info.type) ? kVectorScale : 1;
    const double largest = IsVector(info.type) ? kLargestSide : info.width + info.height;
    const auto side = [&](double length) {
        return static_cast<int>(std::ceil(std::clamp(length * scale, 1.0, std::max(largest, 1.0))));
    };
    const int width = side(info.width);
    const int height = side(info.height);
    Gdiplus::Bitmap bitmap(width, height, PixelFormat32bppARGB);
    Gdiplus::Graphics graphics(&bitmap);
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    if (graphics.DrawImage(&picture, Gdiplus::Rect(0, 0, width, height)) != Gdiplus::Ok)
        return {};
    graphics.Flush(Gdiplus::FlushIntentionSync);
    return ToImage(bitmap);
}

} // namespace

wxImage DecodePicture(std::string_view bytes, const look::PictureInfo& info)
{
    if (info.type == look::PictureType::Svg)
        return {};
    const GdiPlus library;
    const std::unique_ptr<IStream, ReleaseStream> stream(SHCreateMemStream(
        reinterpret_cast<const BYTE*>(bytes.data()), static_cast<UINT>(bytes.size())));
    if (!library.IsReady() || !stream)
        return {};
    Gdiplus::Image picture(stream.get());
    if (picture.GetLastStatus() != Gdiplus::Ok)
        return {};
    if (!IsVector(info.type) &&
        (picture.GetWidth() > info.width || picture.GetHeight() > info.height))
        return {};
    return Paint(picture, info);
}

} // namespace orrery::ui::wx
