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
    bool IsNarrow() const;
    /// Of the controls beside or above the picture.
    int ControlsLength(bool isBelow) const;

    wxWindow* controls_ = nullptr;
    wxWindow* picture_ = nullptr;
    bool isShown_ = true;
    int sash_ = 0; ///< where the user put it, in pixels at 96 dpi; 0: nowhere
};

} // namespace orrery::ui::wx
