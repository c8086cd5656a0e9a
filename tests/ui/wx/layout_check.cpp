#include "layout_check.h"

#include "ui/wx/native/text.h"

#include <functional>
#include <wx/bookctrl.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace orrery::ui::wx {
namespace {

/// Tolerance for the rounding of scaled sizes, in pixels.
constexpr int kTolerance = 1;

std::string Describe(const wxWindow& window)
{
    return FromWx(window.GetName()) + " \"" + FromWx(window.GetLabel()) + "\"";
}

std::string Describe(const wxSize& size)
{
    return std::to_string(size.x) + " x " + std::to_string(size.y);
}

/// Labels with the ellipsis style may be cut off.
bool MayBeCut(const wxWindow& window)
{
    constexpr long cut = wxST_ELLIPSIZE_START | wxST_ELLIPSIZE_MIDDLE | wxST_ELLIPSIZE_END;
    return dynamic_cast<const wxStaticText*>(&window) != nullptr && window.HasFlag(cut);
}

bool HasCaption(const wxWindow& window)
{
    return dynamic_cast<const wxStaticText*>(&window) != nullptr ||
           dynamic_cast<const wxButton*>(&window) != nullptr ||
           dynamic_cast<const wxCheckBox*>(&window) != nullptr;
}

void ForEachVisible(wxWindow& window, const std::function<void(wxWindow&)>& visit)
{
    for (wxWindow* const child : window.GetChildren()) {
        if (!child->IsShownOnScreen() || child->IsTopLevel())
            continue;
        visit(*child);
        ForEachVisible(*child, visit);
    }
}

bool IsClipped(const wxWindow& control)
{
    // The least that is drawn above and below the text.
    constexpr int listFrame = 8;
    constexpr int boxFrame = 6;
    if (dynamic_cast<const wxChoice*>(&control) != nullptr)
        return control.GetCharHeight() + listFrame > control.GetSize().y;
    if (dynamic_cast<const wxTextCtrl*>(&control) != nullptr)
        return control.GetCharHeight() + boxFrame > control.GetSize().y;
    const wxSize needed = control.GetBestSize();
    const wxSize given = control.GetSize() + wxSize(kTolerance, kTolerance);
    return HasCaption(control) && !MayBeCut(control) &&
           !(needed.x <= given.x && needed.y <= given.y);
}

bool ExtendsBeyondParent(const wxWindow& control)
{
    const wxWindow& parent = *control.GetParent();
    if (dynamic_cast<const wxBookCtrlBase*>(&parent) != nullptr)
        return false; // a notebook places its pages itself
    // A scrolled page can show the rest.
    wxRect room(wxPoint(), parent.GetVirtualSize());
    return !room.Inflate(kTolerance).Contains(control.GetRect());
}

std::vector<std::string> Overlaps(const wxWindow& control)
{
    std::vector<std::string> problems;
    bool later = false;
    for (const wxWindow* const other : control.GetParent()->GetChildren()) {
        if (later && other->IsShownOnScreen() && !other->IsTopLevel() &&
            other->GetRect().Deflate(kTolerance).Intersects(control.GetRect()))
            problems.push_back(Describe(control) + " and " + Describe(*other) + " overlap");
        later = later || other == &control;
    }
    return problems;
}

} // namespace

std::vector<std::string> LayoutProblems(wxWindow& window)
{
    std::vector<std::string> problems;
    ForEachVisible(window, [&](wxWindow& control) {
        if (IsClipped(control))
            problems.push_back(Describe(control) + " is clipped: it needs " +
                               Describe(control.GetBestSize()) + " and has " +
                               Describe(control.GetSize()));
        if (ExtendsBeyondParent(control))
            problems.push_back(Describe(control) + " sticks out of its parent");
        for (std::string& overlap : Overlaps(control))
            problems.push_back(std::move(overlap));
    });
    return problems;
}

} // namespace orrery::ui::wx
