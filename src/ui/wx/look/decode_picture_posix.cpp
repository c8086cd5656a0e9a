#include "ui/wx/look/decode_picture.h"

#include <wx/imagbmp.h>
#include <wx/imaggif.h>
#include <wx/imagjpeg.h>
#include <wx/imagpng.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include <cstddef>
#include <string>

namespace orrery::ui::wx {
namespace {

constexpr std::size_t kGifHeader = 13;
constexpr std::size_t kGifImage = 10; // its descriptor

unsigned Byte(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

/// How long the table of colours is that the flags of a GIF's header tell of.
std::size_t ColorTable(unsigned flags)
{
    return (flags & 0x80U) != 0 ? std::size_t{3} << ((flags & 7U) + 1) : 0;
}

/// The end of the blocks of data that begin at `at`.
std::size_t EndOfBlocks(std::string_view bytes, std::size_t at)
{
    while (Byte(bytes, at) != 0)
        at += 1 + Byte(bytes, at);
    return at + 1;
}

/// A GIF with its first image alone: the toolkit would decode thousands of images, too, each as
/// large as it says. Nothing if that image is larger than the picture.
std::string FirstImage(std::string_view bytes, const look::PictureInfo& info)
{
    std::size_t at = kGifHeader + ColorTable(Byte(bytes, 10));
    while (Byte(bytes, at) == '!') // an extension
        at = EndOfBlocks(bytes, at + 2);
    if (Byte(bytes, at) != ',')
        return {};
    const unsigned width = Byte(bytes, at + 5) | Byte(bytes, at + 6) << 8U;
    const unsigned height = Byte(bytes, at + 7) | Byte(bytes, at + 8) << 8U;
    if (width > info.width || height > info.height)
        return {};
    at += kGifImage + ColorTable(Byte(bytes, at + 9)) + 1; // and the size of codes
    return std::string(bytes.substr(0, EndOfBlocks(bytes, at))) + ';';
}

wxImage Load(wxImageHandler&& handler, std::string_view bytes)
{
    const wxLogNull silence; // what is wrong with a picture is no message for the user
    wxImage image;
    wxMemoryInputStream stream(bytes.data(), bytes.size());
    if (!handler.LoadFile(&image, stream, false, 0))
        image.Destroy();
    return image;
}

} // namespace

wxImage DecodePicture(std::string_view bytes, const look::PictureInfo& info)
{
    switch (info.type) {
    case look::PictureType::Png:
        return Load(wxPNGHandler(), bytes);
    case look::PictureType::Jpeg:
        return Load(wxJPEGHandler(), bytes);
    case look::PictureType::Gif:
        return Load(wxGIFHandler(), FirstImage(bytes, info));
    case look::PictureType::Bmp:
        return Load(wxBMPHandler(), bytes);
    case look::PictureType::Tiff:
    case look::PictureType::Emf:
    case look::PictureType::Wmf:
    case look::PictureType::Svg:
        break;
    }
    return {};
}

} // namespace orrery::ui::wx
