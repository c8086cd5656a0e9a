#include <windows.h>

#include "ui/wx/native/native.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <oleacc.h>
#include <utility>
#include <vector>
#include <wx/bookctrl.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/clntdata.h>
#include <wx/dcscreen.h>

namespace orrery::ui::wx {
namespace {

struct ReleaseObject {
    void operator()(IUnknown* object) const { object->Release(); }
};

using AccessibleNames = std::unique_ptr<IAccPropServices, ReleaseObject>;

AccessibleNames OpenAccessibleNames()
{
    void* services = nullptr;
    ::CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                       &services);
    return AccessibleNames(static_cast<IAccPropServices*>(services));
}

/// Windows closes a list that is placed or given a height, and the toolkit does both in every
/// layout.
class DropDownList : public wxChoice {
public:
    explicit DropDownList(wxWindow& parent) : wxChoice(&parent, wxID_ANY) {}

protected:
    void DoSetSize(int x, int y, int width, int height, int flags) override
    {
        const wxRect place(x, y, width, height);
        if (place == place_) // not GetRect(): the control may be lower than its place
            return;
        place_ = place;
        isPlaced_ = true;
        wxChoice::DoSetSize(x, y, width, height, flags);
    }
    void MSWEndDeferWindowPos() override
    {
        if (std::exchange(isPlaced_, false))
            wxChoice::MSWEndDeferWindowPos();
    }

private:
    wxRect place_;
    bool isPlaced_ = false;
};

/// The key code of the letter after "&", or 0.
int MnemonicOf(const wxControl& control)
{
    const wxString text = control.GetLabel();
    const size_t mark = text.find('&');
    if (mark == wxString::npos || mark + 1 == text.size())
        return 0;
    return static_cast<int>(wxToupper(text[mark + 1]).GetValue());
}

/// Handles the mnemonics of a window's labels, and those of its buttons while the focus is on a tab
/// page: the system does both only in plain dialogs.
class Mnemonics : public wxClientData {
public:
    /// The window's object, which is created by the first call.
    static Mnemonics& Of(wxWindow& window)
    {
        if (window.GetClientObject() == nullptr)
            window.SetClientObject(new Mnemonics(window));
        return *static_cast<Mnemonics*>(window.GetClientObject());
    }

    void Add(wxStaticText& label, wxWindow& field) { fields_.push_back({&label, &field}); }

private:
    struct LabelledField {
        wxStaticText* label;
        wxWindow* field;
    };

    explicit Mnemonics(wxWindow& window) : window_(window)
    {
        window.Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
            const bool done = event.GetModifiers() == wxMOD_ALT &&
                              (FocusField(event.GetKeyCode()) || PressButton(event.GetKeyCode()));
            event.Skip(!done);
        });
    }

    /// Moves the focus to the first field with that letter, or from one to the next.
    bool FocusField(int letter) const
    {
        wxWindow* first = nullptr;
        bool passedFocus = false;
        for (const LabelledField& one : fields_) {
            if (MnemonicOf(*one.label) != letter || !one.field->IsShownOnScreen() ||
                !one.field->IsEnabled())
                continue;
            if (passedFocus) {
                one.field->SetFocus();
                return true;
            }
            first = first == nullptr ? one.field : first;
            passedFocus = one.field->HasFocus();
        }
        if (first != nullptr)
            first->SetFocus();
        return first != nullptr;
    }

    /// Of the buttons outside of the tab pages; the system finds those beside the focus itself.
    bool PressButton(int letter) const
    {
        const wxWindow* const focus = wxWindow::FindFocus();
        return focus != nullptr && PressButtonIn(window_, focus->GetParent(), letter);
    }

    static bool PressButtonIn(const wxWindow& parent, const wxWindow* besideFocus, int letter)
    {
        for (wxWindow* const child : parent.GetChildren()) {
            if (child->IsTopLevel() || !child->IsShown() ||
                dynamic_cast<wxBookCtrlBase*>(child) != nullptr)
                continue;
            if (PressButtonIn(*child, besideFocus, letter))
                return true;
            if (&parent != besideFocus && child->IsEnabled() && Press(*child, letter))
                return true;
        }
        return false;
    }

    /// A button or a check box.
    static bool Press(wxWindow& window, int letter)
    {
        auto* const control = dynamic_cast<wxControl*>(&window);
        if (control == nullptr || MnemonicOf(*control) != letter)
            return false;
        auto* const box = dynamic_cast<wxCheckBox*>(control);
        if (box == nullptr && dynamic_cast<wxButton*>(control) == nullptr)
            return false;
        wxCommandEvent click(box != nullptr ? wxEVT_CHECKBOX : wxEVT_BUTTON, control->GetId());
        click.SetEventObject(control);
        if (box != nullptr)
            click.SetInt(box->GetValue() ? 0 : 1); // the state that the command sets
        control->Command(click);
        return true;
    }

    wxWindow& window_;
    std::vector<LabelledField> fields_; ///< in the order of creation
};

} // namespace

// Screen readers use the label that was created before the field.
void AssociateLabel(wxStaticText& label, wxWindow& field)
{
    Mnemonics::Of(*wxGetTopLevelParent(&field)).Add(label, field);
}

// On Windows the first move is enough.
void MoveWhenShown(wxTopLevelWindow& /*window*/, const wxPoint& /*position*/) {}

void SetAccessibleName(wxWindow& control, const wxString& name)
{
    if (const AccessibleNames names = OpenAccessibleNames())
        names->SetHwndPropStr(control.GetHWND(), static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF,
                              PROPID_ACC_NAME, name.wc_str());
}

// Screen readers recognise the system's own dialogs.
void SetDialogRole(wxWindow& /*dialog*/) {}

wxChoice* NewDropDownList(wxWindow& parent)
{
    return new DropDownList(parent);
}

wxFont GraphicsFontOf(const wxWindow& window)
{
    wxFont font = window.GetFont();
    wxScreenDC screen;
    screen.SetFont(font);
    std::vector<std::byte> metrics(::GetOutlineTextMetricsW(screen.GetHDC(), 0, nullptr));
    auto* const outline = reinterpret_cast<OUTLINETEXTMETRICW*>(metrics.data());
    if (metrics.empty() ||
        ::GetOutlineTextMetricsW(screen.GetHDC(), static_cast<UINT>(metrics.size()), outline) == 0)
        return font; // it has no outlines
    const auto family = reinterpret_cast<std::uintptr_t>(outline->otmpFamilyName); // an offset
    font.SetFaceName(reinterpret_cast<const wchar_t*>(metrics.data() + family));
    return font;
}

void FitHeight(wxTextCtrl& /*box*/) {} // the toolkit knows it

void PadText(wxTextCtrl& /*box*/) {} // it is padded already

void FitArrows(wxSpinButton& arrows, const wxWindow& box)
{
    wxSize size = arrows.GetBestSize();
    size.y = std::min(size.y, box.GetBestSize().y);
    arrows.SetMinSize(size);
}

void ShowTabCaption(wxNotebook& tabs, size_t page, const wxString& caption)
{
    if (tabs.GetPageText(page) != caption)
        tabs.SetPageText(page, caption);
}

int ShowMessageBox(wxWindow* parent, const wxString& text, const wxString& title, long style)
{
    const bool asks = (style & wxYES_NO) == wxYES_NO;
    UINT flags = asks ? MB_YESNO : MB_OK;
    flags |= (style & wxICON_QUESTION) != 0 ? MB_ICONQUESTION : MB_ICONEXCLAMATION;
    HWND const owner = parent == nullptr ? nullptr : parent->GetHWND();
    const int answer = ::MessageBoxW(owner, text.wc_str(), title.wc_str(), flags);
    if (!asks)
        return wxID_OK;
    return answer == IDYES ? wxID_YES : wxID_NO;
}

void ShowLayout(wxWindow& /*window*/) {}

void HandleInputOf(wxWindow& control)
{
    HWND const handle = control.GetHWND();
    // What changed is drawn at once, since no other message than the control's is handled.
    ::RedrawWindow(::GetAncestor(handle, GA_ROOT), nullptr, nullptr,
                   RDW_UPDATENOW | RDW_ALLCHILDREN);
    MSG message = {};
    const auto dispatch = [&message] {
        ::TranslateMessage(&message);
        ::DispatchMessageW(&message);
    };
    // Clicks and keys for others would otherwise take effect after the wait.
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT) != FALSE) {
        if (message.hwnd == handle)
            dispatch();
    }
    while (::PeekMessageW(&message, handle, 0, 0, PM_REMOVE) != FALSE)
        dispatch();
}

// The system highlights the default button, but the toolkit sets it only in an active window, and a
// window is not active while it is being built.
void Emphasize(wxButton& button)
{
    wxGetTopLevelParent(&button)->Bind(wxEVT_ACTIVATE, [&button](wxActivateEvent& event) {
        if (event.GetActive())
            button.SetDefault();
        event.Skip();
    });
}

} // namespace orrery::ui::wx
