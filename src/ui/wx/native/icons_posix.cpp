#include "ui/wx/native/icons.h"

#include "ui/wx/native/art.h"

#include <wx/imagpng.h>
#include <wx/mstream.h>

namespace orrery::ui::wx {
namespace {

wxBitmap Decode(const Picture& picture)
{
    wxMemoryInputStream bytes(picture.bytes, picture.length);
    wxImage image;
    wxPNGHandler().LoadFile(&image, bytes);
    return wxBitmap(image);
}

} // namespace

wxIconBundle ApplicationIcons()
{
    wxIconBundle icons;
    for (const Picture& picture : IconPngs()) {
        wxIcon icon;
        icon.CopyFromBitmap(Decode(picture));
        icons.AddIcon(icon);
    }
    return icons;
}

wxBitmapBundle Logo(int size)
{
    wxVector<wxBitmap> sizes;
    for (const Picture& picture : IconPngs()) {
        if (picture.size == size || picture.size == 2 * size)
            sizes.push_back(Decode(picture));
    }
    return wxBitmapBundle::FromBitmaps(sizes);
}

} // namespace orrery::ui::wx
