#pragma once

#include <wx/splitter.h>

#include <string>

namespace orrery::ui::wx {

/// The controls of a window with a picture at their right, or below them where the window is
/// narrow. The divider can be moved; the picture can be hidden.
class PreviewSplitter : public wxSplitterWindow {
public:
    explicit PreviewSplitter(wxWindow& parent);

    /// Both are children of this window.
    void Initialize(wxWindow& controls, wxWindow& picture);
    /// The controls can be scrolled, but this is how large they like to be. Where neither beside
    /// nor below them is room for the picture, it is not seen.
    void SetControlsSize(const wxSize& good);
    bool IsPictureShown() const { return isShown_; }
    /// Shows or hides the picture. The controls keep their size.
    void ShowPicture(bool isShown);

    /// The divider's place and whether the picture is shown, as text for the settings.
    std::string Placement() const;
    /// Takes what `Placement` gave; ignores other texts.
    void RestorePlacement(const std::string& text);
    /// The size of the window's inside at which both have a good place.
    wxSize ComfortableSize() const;

    /// What the controls need, and the picture where it is below them.
    wxSize GetMinSize() const override;

private:
    void Arrange();
    wxSize ControlsSize() const;
    bool IsNarrow() const;
    bool HasRoom(bool isBelow) const;
    /// Of the controls beside or above the picture.
    int ControlsLength(bool isBelow) const;

    wxWindow* controls_ = nullptr;
    wxWindow* picture_ = nullptr;
    bool isShown_ = true;
    wxSize goodControls_; ///< 0 if they cannot be scrolled
    int sash_ = 0;        ///< where the user put it, in pixels at 96 dpi; 0: nowhere
};

} // namespace orrery::ui::wx
