#include "ui/wx/native/icons.h"

namespace orrery::ui::wx {
namespace {

constexpr const char* kIconResource = "ORRERY";

} // namespace

wxIconBundle ApplicationIcons()
{
    return wxIconBundle(kIconResource, nullptr);
}

wxBitmapBundle Logo(int size)
{
    const wxIconBundle icons = ApplicationIcons();
    wxVector<wxBitmap> sizes;
    for (const int pixels : {size, 2 * size}) {
        wxBitmap bitmap;
        if (bitmap.CopyFromIcon(icons.GetIcon(wxSize(pixels, pixels))))
            sizes.push_back(bitmap);
    }
    return wxBitmapBundle::FromBitmaps(sizes);
}

} // namespace orrery::ui::wx
