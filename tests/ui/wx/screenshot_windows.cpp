#include <windows.h>

#include <objidl.h>

#include <gdiplus.h>

#include "screenshot.h"

#include <memory>
#include <stdexcept>
#include <wx/bitmap.h>
#include <wx/image.h>

namespace orrery::ui::wx {
namespace {

namespace gdi = Gdiplus;

constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

/// Initialises the system's picture library until the scope ends.
class PictureLibrary {
public:
    PictureLibrary()
    {
        const gdi::GdiplusStartupInput input;
        if (gdi::GdiplusStartup(&token_, &input, nullptr) != gdi::Ok)
            throw std::runtime_error("The system's library of pictures does not start.");
    }
    ~PictureLibrary() { gdi::GdiplusShutdown(token_); }
    PictureLibrary(const PictureLibrary&) = delete;
    PictureLibrary& operator=(const PictureLibrary&) = delete;

private:
    ULONG_PTR token_ = 0;
};

struct DeleteObjectOf {
    void operator()(HGDIOBJ object) const { ::DeleteObject(object); }
};

using BitmapHandle = std::unique_ptr<HBITMAP__, DeleteObjectOf>;

/// Copies a rectangle of the screen.
BitmapHandle CopyOfScreen(const RECT& place)
{
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    HDC const screen = ::GetDC(nullptr);
    HDC const memory = ::CreateCompatibleDC(screen);
    BitmapHandle copy(::CreateCompatibleBitmap(screen, width, height));
    HGDIOBJ const before = ::SelectObject(memory, copy.get());
    ::BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    ::SelectObject(memory, before);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    return copy;
}

void Save(const RECT& place, const std::filesystem::path& file)
{
    std::filesystem::create_directories(file.parent_path());
    const PictureLibrary library;
    gdi::Bitmap picture(CopyOfScreen(place).get(), nullptr);
    if (picture.Save(file.c_str(), &kPngEncoder, nullptr) != gdi::Ok)
        throw std::runtime_error("No picture: " + file.string());
}

} // namespace

void CaptureFrontWindow(const std::filesystem::path& file)
{
    RECT place{};
    if (!::GetWindowRect(::GetForegroundWindow(), &place))
        throw std::runtime_error("No window is in front.");
    Save(place, file);
}

void CaptureScreen(const std::filesystem::path& file)
{
    Save({0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)}, file);
}

std::size_t CountColours(const std::filesystem::path& file, std::size_t most, const wxRect& part)
{
    const PictureLibrary library;
    gdi::Bitmap picture(file.c_str());
    HBITMAP handle = nullptr;
    if (picture.GetHBITMAP(gdi::Color(), &handle) != gdi::Ok)
        return 0;
    wxBitmap bitmap;
    bitmap.InitFromHBITMAP(handle, static_cast<int>(picture.GetWidth()),
                           static_cast<int>(picture.GetHeight()), 24);
    const wxImage image = bitmap.ConvertToImage();
    return (part.IsEmpty() ? image : image.GetSubImage(part))
        .CountColours(static_cast<unsigned long>(most));
}

} // namespace orrery::ui::wx
