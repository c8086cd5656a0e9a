#include "ui/wx/window_place.h"

#include "ui/wx/native.h"
#include "ui/wx/text.h"
#include "util/paths.h"
#include "util/profile.h"

#include <wx/display.h>

#include <optional>
#include <sstream>

namespace orrery::ui::wx {
namespace {

constexpr const char* kSection = "Windows";
constexpr const char* kMaximized = "maximized";

struct Place {
    wxRect frame;
    bool maximized = false;
};

/// "x y width height", and "maximized" where it is.
std::optional<Place> ReadPlace(const std::string& text)
{
    std::istringstream words(text);
    Place place;
    std::string state;
    if (!(words >> place.frame.x >> place.frame.y >> place.frame.width >> place.frame.height))
        return std::nullopt;
    words >> state;
    place.maximized = state == kMaximized;
    return place;
}

std::string FormatPlace(const Place& place)
{
    std::ostringstream text;
    text << place.frame.x << ' ' << place.frame.y << ' ' << place.frame.width << ' '
         << place.frame.height;
    if (place.maximized)
        text << ' ' << kMaximized;
    return text.str();
}

/// Whether the title bar of the window would be within reach.
bool IsOnAScreen(const wxRect& frame)
{
    return wxDisplay::GetFromPoint(frame.GetTopLeft() + wxPoint(frame.width / 2, 10)) !=
           wxNOT_FOUND;
}

} // namespace

void RestorePlace(wxTopLevelWindow& window, const std::string& settingsFile)
{
    const util::Profile profile(util::ToPath(settingsFile));
    const auto place = ReadPlace(profile.Read(kSection, FromWx(window.GetName()), ""));
    if (!place)
        return;
    wxSize size = place->frame.GetSize();
    size.IncTo(window.GetEffectiveMinSize());
    size.DecTo(wxDisplay(&window).GetClientArea().GetSize());
    window.SetSize(size);
    if (IsOnAScreen(place->frame)) {
        window.Move(place->frame.GetTopLeft());
        InsistOnPlace(window, place->frame.GetTopLeft());
    }
    if (place->maximized)
        window.Maximize();
}

void KeepPlace(const wxTopLevelWindow& window, const std::string& settingsFile)
{
    if (window.IsIconized())
        return;
    const util::Profile profile(util::ToPath(settingsFile));
    const std::string name = FromWx(window.GetName());
    Place place{window.GetRect(), window.IsMaximized()};
    if (place.maximized) { // the size before is the one to go back to
        if (const auto before = ReadPlace(profile.Read(kSection, name, "")))
            place.frame = before->frame;
    }
    profile.Write(kSection, name, FormatPlace(place));
}

} // namespace orrery::ui::wx
