#include "ui/wx/look/decode_picture.h"

#include "look/picture/gif.h"

#include <wx/imagbmp.h>
#include <wx/imaggif.h>
#include <wx/imagjpeg.h>
#include <wx/imagpng.h>
#include <wx/log.h>
#include <wx/mstream.h>

#include <string>

namespace orrery::ui::wx {
namespace {

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
        return Load(wxGIFHandler(), look::FirstImageOfGif(bytes, info));
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
