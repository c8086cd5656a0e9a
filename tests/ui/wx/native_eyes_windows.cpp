#include <windows.h>

#include "native_eyes.h"

#include "ui/wx/native/text.h"

#include <array>
#include <cstdlib>
#include <wx/choice.h>
#include <wx/control.h>
#include <wx/mousestate.h>
#include <wx/msw/private.h>
#include <wx/thread.h>

namespace orrery::ui::wx {
namespace {

std::wstring ClassOf(HWND window)
{
    std::array<wchar_t, 64> name{};
    ::GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

std::string TextOf(HWND window)
{
    std::array<wchar_t, 4096> text{};
    ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    return FromWx(wxString(text.data()));
}

/// Finds dialogs of the system that are not windows of the toolkit.
BOOL CALLBACK FindBox(HWND window, LPARAM found)
{
    const bool isBox = ClassOf(window) == L"#32770" && ::IsWindowVisible(window) &&
                       wxFindWinFromHandle(window) == nullptr;
    if (isBox)
        *reinterpret_cast<HWND*>(found) = window;
    return !isBox;
}

Sign SignOf(LRESULT icon)
{
    const auto isOfSystem = [icon](const wchar_t* name) {
        return reinterpret_cast<LRESULT>(::LoadIconW(nullptr, name)) == icon;
    };
    if (isOfSystem(IDI_EXCLAMATION))
        return Sign::Exclamation;
    return isOfSystem(IDI_QUESTION) ? Sign::Question : Sign::Other;
}

BOOL CALLBACK ReadPart(HWND part, LPARAM box)
{
    auto& seen = *reinterpret_cast<MessageBox*>(box);
    const std::string text = TextOf(part);
    if (!::IsWindowVisible(part))
        return TRUE;
    const bool isStatic = ClassOf(part) == L"Static";
    if (const LRESULT icon = isStatic ? ::SendMessageW(part, STM_GETICON, 0, 0) : 0; icon != 0)
        seen.sign = SignOf(icon);
    if (text.empty())
        return TRUE;
    if (ClassOf(part) == L"Button")
        seen.buttons.push_back(FromWx(wxControl::RemoveMnemonics(ToWx(text))));
    else
        seen.text = text;
    return TRUE;
}

/// A button's event, if any, together with a move to that position.
void SendMouse(DWORD button, const wxPoint& screenPosition)
{
    constexpr LONG kWhole = 65536; // of the screen's width and height
    const LONG width = ::GetSystemMetrics(SM_CXSCREEN);
    const LONG height = ::GetSystemMetrics(SM_CYSCREEN);
    INPUT event{};
    event.type = INPUT_MOUSE;
    event.mi.dx = (screenPosition.x * kWhole + width - 1) / width;
    event.mi.dy = (screenPosition.y * kWhole + height - 1) / height;
    event.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | button;
    ::SendInput(1, &event, sizeof event);
}

} // namespace

std::optional<MessageBox> FindMessageBox()
{
    HWND box = nullptr;
    ::EnumThreadWindows(::GetCurrentThreadId(), FindBox, reinterpret_cast<LPARAM>(&box));
    if (box == nullptr)
        return std::nullopt;
    MessageBox seen{TextOf(box), {}, {}, ::GetForegroundWindow() == box, Sign::None};
    ::EnumChildWindows(box, ReadPart, reinterpret_cast<LPARAM>(&seen));
    return seen;
}

wxWindow* FindFocus(wxWindow& topLevel)
{
    wxWindow* const focus = wxWindow::FindFocus();
    return wxGetTopLevelParent(focus) == &topLevel ? focus : nullptr;
}

// The second click of a double click shows nothing.
bool IsDropped(const wxChoice& choice)
{
    return ::SendMessageW(choice.GetHWND(), CB_GETDROPPEDSTATE, 0, 0) != FALSE;
}

bool IsInputPending()
{
    return HIWORD(::GetQueueStatus(QS_INPUT)) != 0;
}

void WakeMainThread()
{
    ::PostThreadMessageW(static_cast<DWORD>(wxThread::GetMainId()), WM_NULL, 0, 0);
}

// The pointer may be moved back between a move and a press that come by themselves.
void PressMouse(wxUIActionSimulator&, int button, const wxPoint& screenPosition)
{
    constexpr std::array<DWORD, 2> kLeftButton = {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP};
    constexpr std::array<DWORD, 2> kRightButton = {MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP};
    for (const DWORD press : button == wxMOUSE_BTN_RIGHT ? kRightButton : kLeftButton)
        SendMouse(press, screenPosition);
}

void DragMouse(wxUIActionSimulator&, DragStep step, const wxPoint& screenPosition)
{
    DWORD button = 0;
    if (step == DragStep::Press)
        button = MOUSEEVENTF_LEFTDOWN;
    else if (step == DragStep::Release)
        button = MOUSEEVENTF_LEFTUP;
    SendMouse(button, screenPosition);
}

bool IsMouseAt(const wxPoint& screenPosition)
{
    POINT place{};
    ::GetCursorPos(&place);
    return std::abs(place.x - screenPosition.x) <= 1 && std::abs(place.y - screenPosition.y) <= 1;
}

} // namespace orrery::ui::wx
