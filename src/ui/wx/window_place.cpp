#include "ui/wx/window_place.h"

#include "app/folders.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "util/paths.h"
#include "util/profile.h"

#include <wx/display.h>

#include <optional>
#include <sstream>

namespace orrery::ui::wx {
namespace {

constexpr const char* kSection = app::kPlacesSection;
constexpr const char* kMaximized = "maximized";

struct Placement {
    wxRect frame;
    bool maximized = false;
};

/// "x y width height", followed by "maximized" if it is.
std::optional<Placement> ParsePlacement(const std::string& text)
{
    std::istringstream words(text);
    Placement placement;
    std::string state;
    if (!(words >> placement.frame.x >> placement.frame.y >> placement.frame.width >>
          placement.frame.height))
        return std::nullopt;
    words >> state;
    placement.maximized = state == kMaximized;
    return placement;
}

std::string FormatPlacement(const Placement& placement)
{
    std::ostringstream text;
    text << placement.frame.x << ' ' << placement.frame.y << ' ' << placement.frame.width << ' '
         << placement.frame.height;
    if (placement.maximized)
        text << ' ' << kMaximized;
    return text.str();
}

/// Whether the title bar of the window would be on a screen.
bool IsOnScreen(const wxRect& frame)
{
    return wxDisplay::GetFromPoint(frame.GetTopLeft() + wxPoint(frame.width / 2, 10)) !=
           wxNOT_FOUND;
}

} // namespace

void RestorePlacement(wxTopLevelWindow& window, const std::string& settingsFile)
{
    const util::Profile profile(util::ToPath(settingsFile));
    const auto placement = ParsePlacement(profile.Read(kSection, FromWx(window.GetName()), ""));
    if (!placement)
        return;
    wxSize size = placement->frame.GetSize();
    size.IncTo(window.GetEffectiveMinSize());
    size.DecTo(wxDisplay(&window).GetClientArea().GetSize());
    window.SetSize(size);
    if (IsOnScreen(placement->frame)) {
        window.Move(placement->frame.GetTopLeft());
        MoveWhenShown(window, placement->frame.GetTopLeft());
    }
    if (placement->maximized)
        window.Maximize();
}

void SavePlacement(const wxTopLevelWindow& window, const std::string& settingsFile)
{
    if (window.IsIconized())
        return;
    const util::Profile profile(util::ToPath(settingsFile));
    const std::string name = FromWx(window.GetName());
    Placement placement{window.GetRect(), window.IsMaximized()};
    if (placement.maximized) { // keep the size to which the window can be restored
        if (const auto before = ParsePlacement(profile.Read(kSection, name, "")))
            placement.frame = before->frame;
    }
    profile.Write(kSection, name, FormatPlacement(placement));
}

std::string ReadPlacement(const std::string& part, const std::string& settingsFile)
{
    return util::Profile(util::ToPath(settingsFile)).Read(kSection, part, "");
}

void WritePlacement(const std::string& part, const std::string& placement,
                    const std::string& settingsFile)
{
    util::Profile(util::ToPath(settingsFile)).Write(kSection, part, placement);
}

} // namespace orrery::ui::wx
