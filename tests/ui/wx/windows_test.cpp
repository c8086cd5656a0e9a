#include <windows.h>

#include "main_thread.h"
#include "parameter_dialog_support.h"
#include "places/places.h"

#include <array>
#include <cstdlib>
#include <gmock/gmock.h>
#include <set>
#include <wx/listbox.h>

namespace orrery::ui::wx {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

/// Tests of windows that apply only to this system.
class WindowsTest : public ParameterDialogTest {
protected:
    static constexpr const wchar_t* kViewerKey =
        L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";

    ~WindowsTest() override
    {
        if (!viewer_.empty())
            SetViewer(viewer_);
    }
    /// Registers another library as the system's help viewer until the test ends.
    void ReplaceViewer(const std::wstring& library)
    {
        std::array<wchar_t, MAX_PATH> path{};
        DWORD bytes = sizeof path;
        ASSERT_EQ(::RegGetValueW(HKEY_CLASSES_ROOT, kViewerKey, nullptr, RRF_RT_REG_SZ, nullptr,
                                 path.data(), &bytes),
                  ERROR_SUCCESS);
        viewer_ = path.data();
        SetViewer(library);
    }

private:
    static void SetViewer(const std::wstring& library)
    {
        const auto bytes = static_cast<DWORD>((library.size() + 1) * sizeof(wchar_t));
        ::RegSetKeyValueW(HKEY_CLASSES_ROOT, kViewerKey, nullptr, REG_SZ, library.c_str(), bytes);
    }

    std::wstring viewer_;
};

/// Where words begin in a line of a list, in pixels: ink after a gap wider than any inside a word.
std::vector<int> WordStarts(HWND list, int row)
{
    ::SendMessageW(list, LB_SETTOPINDEX, static_cast<WPARAM>(row), 0);
    ::UpdateWindow(list);
    RECT line{};
    ::SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&line));
    HDC const canvas = ::GetDC(list);
    const COLORREF paper = ::GetPixel(canvas, line.right - 3, line.top + 2);
    constexpr int wordGap = 8;
    std::vector<int> starts;
    int lastInk = -wordGap;
    for (int x = line.left; x < line.right; ++x) {
        bool ink = false;
        for (int y = line.top; y < line.bottom && !ink; ++y)
            ink = ::GetPixel(canvas, x, y) != paper;
        if (ink && x - lastInk >= wordGap)
            starts.push_back(x);
        lastInk = ink ? x : lastInk;
    }
    ::ReleaseDC(list, canvas);
    return starts;
}

/// The list's unit of width: an average character of its font.
int CharacterWidth(HWND list)
{
    HDC const canvas = ::GetDC(list);
    HGDIOBJ const before =
        ::SelectObject(canvas, reinterpret_cast<HGDIOBJ>(::SendMessageW(list, WM_GETFONT, 0, 0)));
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(canvas, &metrics);
    ::SelectObject(canvas, before);
    ::ReleaseDC(list, canvas);
    return metrics.tmAveCharWidth;
}

TEST_F(WindowsTest, ColumnsOfHolidaysBeginAtTheEighthAndTheEighteenthCharacter)
{
    Open();
    user_->Click("cmdMChangeHoliday");
    user_->WaitForWindow("frmHoliday");
    constexpr int thanksgiving = 9; // a line with a weekday
    ASSERT_EQ(user_->RowsOf("lstHoliday").at(thanksgiving), "1104\tThursday\tThanksgiving Day");
    const auto [starts, width] = OnMain([] {
        HWND const list = FindControl("lstHoliday").GetHWND();
        return std::pair(WordStarts(list, thanksgiving), CharacterWidth(list));
    });
    ASSERT_THAT(starts, testing::SizeIs(testing::Ge(3U)));
    constexpr int bearing = 4; // space around a character, and the list's margin
    EXPECT_THAT(starts[1],
                testing::AllOf(testing::Ge(8 * width - 1), testing::Le(8 * width + bearing)));
    EXPECT_THAT(starts[2],
                testing::AllOf(testing::Ge(18 * width - 1), testing::Le(18 * width + bearing)));
}

TEST_F(WindowsTest, WithoutItsViewerTheHelpIsOpenedLikeADocument)
{
    WriteHelp("main");
    ReplaceViewer(L"no such viewer.dll");
    Start();
    user_->Key(WXK_F1);
    EXPECT_EQ(WaitForOpened(), (At("help") / "Orrery.chm").string());
}

TEST_F(WindowsTest, MissingHelpIsReportedWithTheFileName)
{
    Start();
    user_->Click("cmdHelp");
    EXPECT_EQ(user_->WaitForMessage(), "Error!\nError Info: \"" +
                                           (At("help") / "Orrery.chm").string() +
                                           "\" was not found. Check the name and the folder.");
    user_->Answer(WXK_RETURN);
    EXPECT_THAT(Opened(), ElementsAre());
}

TEST_F(WindowsTest, EveryWindowHasTheProgramsIcon)
{
    Start();
    const auto hasIcons = [] {
        HWND const window = FrontWindow()->GetHWND();
        return ::SendMessageW(window, WM_GETICON, ICON_SMALL, 0) != 0 &&
               ::SendMessageW(window, WM_GETICON, ICON_BIG, 0) != 0;
    };
    EXPECT_TRUE(OnMain(hasIcons));
    user_->Click("cmdAbout");
    user_->WaitForWindow("frmAbout");
    EXPECT_TRUE(OnMain(hasIcons));
}

/// A process that ends with the test.
class Process {
public:
    explicit Process(std::wstring line)
    {
        STARTUPINFOW start{};
        start.cb = sizeof start;
        if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &start, &process_))
            throw std::runtime_error("The program does not start.");
    }
    ~Process()
    {
        ::TerminateProcess(process_.hProcess, 1);
        ::WaitForSingleObject(process_.hProcess, INFINITE);
        ::CloseHandle(process_.hProcess);
        ::CloseHandle(process_.hThread);
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

private:
    PROCESS_INFORMATION process_{};
};

/// The colours of a part of the screen.
std::set<COLORREF> ColoursOn(const wxRect& place)
{
    HDC const screen = ::GetDC(nullptr);
    std::set<COLORREF> colours;
    for (int y = place.GetTop(); y <= place.GetBottom(); ++y) {
        for (int x = place.GetLeft(); x <= place.GetRight(); ++x)
            colours.insert(::GetPixel(screen, x, y));
    }
    ::ReleaseDC(nullptr, screen);
    return colours;
}

TEST_F(WindowsTest, AnOpenListStaysOpenWhenTheWindowIsLaidOut)
{
    Start();
    const auto isOpen = [] {
        const HWND list = FindControl("cboTemplateFile").GetHWND();
        return ::SendMessageW(list, CB_GETDROPPEDSTATE, 0, 0) != FALSE;
    };
    user_->Click("cboTemplateFile");
    ASSERT_TRUE(OnMain(isOpen));
    OnMain([this] { program_->window->Layout(); }); // as when a proposal appears beside it
    EXPECT_TRUE(OnMain(isOpen));
    user_->Key(WXK_ESCAPE);
}

TEST_F(WindowsTest, CancelIsDrawnWhileARunWaits)
{
    Start();
    user_->Choose("cboTemplateFile", "Desk.xlsx");
    OnMain([this] { program_->engines.isStuck = true; });
    user_->Key('G', wxMOD_ALT);
    WaitFor("Cancel", [this] { return program_->form.cmdCancel.visible; });
    WaitFor("its picture", [] {
        // A button has a frame, a face and a caption; the window has one colour there without it.
        return ColoursOn(FindControl("cmdCancel").GetScreenRect()).size() > 2;
    });
    user_->Click("cmdCancel");
    user_->WaitForMessage();
    user_->Answer(WXK_RETURN);
    WaitFor("the run's end", [this] { return !program_->form.cmdCancel.visible; });
}

TEST_F(WindowsTest, TheProgramAcceptsTemplateNamesOutsideTheCodePage)
{
    fs::copy(places::WindowProgram(), At("orrery.exe")); // beside its orrery.ini
    const fs::path name = u8"\u4e88\u5b9a \u0394 \u017c\u00f3\u0142w.xlsx";
    fs::copy(At("template/Desk.xlsx"), At("") / name);
    const Process program(L'"' + At("orrery.exe").wstring() + L"\" \"" + (At("") / name).wstring() +
                          L'"');
    WaitFor("the template", [&] { return fs::exists(At("template") / name); });
}

} // namespace
} // namespace orrery::ui::wx
