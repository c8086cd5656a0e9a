#include "ui/wx/preview/preview_splitter.h"

#include <algorithm>
#include <sstream>

namespace orrery::ui::wx {
namespace {

constexpr const char* kHidden = "hidden";

// In pixels at 96 dpi.
constexpr int kLeastPicture = 260;
constexpr int kLeastControls = 320; // the height of those that can be scrolled
constexpr int kGoodPictureWidth = 620;
constexpr int kGoodHeight = 600;

} // namespace

PreviewSplitter::PreviewSplitter(wxWindow& parent)
    : wxSplitterWindow(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxSP_LIVE_UPDATE | wxSP_NOBORDER | wxTAB_TRAVERSAL)
{
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        Arrange();
        event.Skip();
    });
    Bind(wxEVT_SPLITTER_SASH_POS_CHANGED, [this](wxSplitterEvent& event) {
        if (GetSplitMode() == wxSPLIT_VERTICAL)
            sash_ = ToDIP(event.GetSashPosition());
        event.Skip();
    });
    Bind(wxEVT_SPLITTER_DOUBLECLICKED, [](wxSplitterEvent& event) { event.Veto(); });
}

void PreviewSplitter::Initialize(wxWindow& controls, wxWindow& picture)
{
    controls_ = &controls;
    picture_ = &picture;
    wxSplitterWindow::Initialize(controls_);
    picture_->Hide();
    Arrange();
}

void PreviewSplitter::SetControlsSize(const wxSize& good)
{
    goodControls_ = good;
    Arrange();
}

void PreviewSplitter::ShowPicture(bool isShown)
{
    if (isShown_ == isShown)
        return;
    isShown_ = isShown;
    Arrange();
}

wxSize PreviewSplitter::ControlsSize() const
{
    return goodControls_ == wxSize() ? controls_->GetEffectiveMinSize() : goodControls_;
}

bool PreviewSplitter::IsNarrow() const
{
    return GetClientSize().x < ControlsSize().x + FromDIP(kLeastPicture);
}

/// Controls that cannot be scrolled have made room for the picture.
bool PreviewSplitter::HasRoom(bool isBelow) const
{
    return !isBelow || goodControls_ == wxSize() ||
           GetClientSize().y >= FromDIP(kLeastControls + kLeastPicture);
}

int PreviewSplitter::ControlsLength(bool isBelow) const
{
    const wxSize good = ControlsSize();
    if (isBelow && goodControls_ != wxSize())
        return std::min(good.y, GetClientSize().y - FromDIP(kLeastPicture));
    if (isBelow)
        return good.y;
    if (sash_ == 0)
        return good.x;
    const int least = controls_->GetEffectiveMinSize().x;
    const int most = GetClientSize().x - FromDIP(kLeastPicture);
    return std::clamp(FromDIP(sash_), least, std::max(most, least));
}

void PreviewSplitter::Arrange()
{
    if (controls_ == nullptr)
        return;
    const bool isBelow = IsNarrow();
    if (!isShown_ || !HasRoom(isBelow)) {
        if (IsSplit())
            Unsplit(picture_);
        return;
    }
    const auto mode = isBelow ? wxSPLIT_HORIZONTAL : wxSPLIT_VERTICAL;
    const int length = ControlsLength(isBelow);
    if (IsSplit() && GetSplitMode() == mode) {
        SetSashPosition(length);
        return;
    }
    if (IsSplit())
        Unsplit(picture_);
    if (isBelow)
        SplitHorizontally(controls_, picture_, length);
    else
        SplitVertically(controls_, picture_, length);
}

wxSize PreviewSplitter::GetMinSize() const
{
    if (controls_ == nullptr)
        return wxDefaultSize;
    wxSize size = controls_->GetEffectiveMinSize();
    if (isShown_ && IsSplit() && GetSplitMode() == wxSPLIT_HORIZONTAL && goodControls_ == wxSize())
        size.y += GetSashSize() + FromDIP(kLeastPicture);
    return size;
}

wxSize PreviewSplitter::ComfortableSize() const
{
    wxSize size = ControlsSize();
    if (isShown_)
        size += wxSize(FromDIP(kGoodPictureWidth), 0);
    size.IncTo(wxSize(0, isShown_ ? FromDIP(kGoodHeight) : 0));
    return size;
}

std::string PreviewSplitter::Placement() const
{
    return std::to_string(sash_) + (isShown_ ? "" : std::string(" ") + kHidden);
}

void PreviewSplitter::RestorePlacement(const std::string& text)
{
    std::istringstream words(text);
    int sash = 0;
    if (!(words >> sash))
        return;
    std::string state;
    words >> state;
    sash_ = std::max(sash, 0);
    isShown_ = state != kHidden;
    Arrange();
}

} // namespace orrery::ui::wx
