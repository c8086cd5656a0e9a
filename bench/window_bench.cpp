// Opens windows and leaves as soon as they are on the screen: the cost of the whole process is
// measured from outside.
//
// usage: window_bench bare              a window with one button, and nothing else of the program
//        window_bench main              the main window, as a user starts it, with the page
//                                       beside the controls unless the settings hide it
//        window_bench pages             the same until every page of the calendar was painted
//        window_bench year COUNT        changes the year COUNT times; prints the milliseconds to
//                                       the painted page, the median
//        window_bench drag COUNT        drags the page at four times its size on paper COUNT
//                                       times; prints the milliseconds to its being painted
//        window_bench outline COUNT     drags the outline of the days on the model sheet of the
//                                       parameter dialog COUNT times; prints the milliseconds to
//                                       its being painted
//        window_bench parameters COUNT  the parameter dialog with COUNT lists of names; prints
//                                       the milliseconds that it takes to open
#include "engines/engine_choice.h"
#include "ui/parameter_form.h"
#include "ui/wx/main/application.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace orrery;
using Clock = std::chrono::steady_clock;

/// Calls a function once, when a window of the given kind has been painted, nothing is left to do,
/// and a condition holds.
class WhenPainted : public wxEventFilter {
public:
    WhenPainted() { wxEvtHandler::AddFilter(this); }
    ~WhenPainted() override { wxEvtHandler::RemoveFilter(this); }

    using Function = std::function<void(wxTopLevelWindow&)>;
    using Condition = std::function<bool(wxTopLevelWindow&)>;

    void Call(const wxClassInfo* kind, Function function, Condition condition = {})
    {
        kind_ = kind;
        function_ = std::move(function);
        condition_ = std::move(condition);
        painted_ = nullptr;
    }

    int FilterEvent(wxEvent& event) override
    {
        if (event.GetEventType() == wxEVT_PAINT) {
            auto* const window = wxDynamicCast(event.GetEventObject(), wxWindow);
            wxWindow* const top = wxGetTopLevelParent(window);
            if (top != nullptr && kind_ != nullptr && top->IsKindOf(kind_))
                painted_ = wxDynamicCast(top, wxTopLevelWindow);
        }
        if (event.GetEventType() == wxEVT_IDLE && painted_ != nullptr && function_ &&
            (!condition_ || condition_(*painted_)))
            std::exchange(function_, {})(*painted_);
        return Event_Skip;
    }

private:
    const wxClassInfo* kind_ = nullptr;
    Function function_;
    Condition condition_;
    wxTopLevelWindow* painted_ = nullptr;
};

class BareApplication : public wxApp {
public:
    bool OnInit() override
    {
        auto* const frame = new wxFrame(nullptr, wxID_ANY, "Bare");
        new wxButton(new wxPanel(frame), wxID_ANY, "Generate");
        frame->Show();
        painted_.Call(CLASSINFO(wxFrame), [](wxTopLevelWindow& window) { window.Close(); });
        return true;
    }

private:
    WhenPainted painted_;
};

model::NameTables FullTables(int count)
{
    model::NameTables tables;
    for (int i = 0; i < count; ++i) {
        const std::string number = ' ' + std::to_string(i + 1);
        model::MonthNameList::Names months;
        months.fill("Month name" + number);
        tables.Months.Add(months);
        model::WeekdayNameList::Names weekdays;
        weekdays.fill("Weekday" + number);
        tables.Weekdays.Add(weekdays);
    }
    return tables;
}

enum class Task { Start, AllPages, Year, Drag, Outline, Dialog };

/// The program itself, which leaves once its window is there and a task is done.
class MeasuredApplication : public ui::wx::Application {
public:
    MeasuredApplication(Task task, int count)
        : Application(std::make_unique<engines::InstalledEngines>()), task_(task), count_(count)
    {
    }

    bool OnInit() override
    {
        if (!Application::OnInit())
            return false;
        painted_.Call(
            CLASSINFO(wxFrame),
            [this](wxTopLevelWindow& window) { window.CallAfter([&] { Perform(window); }); },
            [this](wxTopLevelWindow& window) { return IsReady(window); });
        return true;
    }
    void OnInitCmdLine(wxCmdLineParser& /*parser*/) override {}
    bool OnCmdLineParsed(wxCmdLineParser& /*parser*/) override { return true; }

    int FilterEvent(wxEvent& event) override
    {
        const auto* const window = wxDynamicCast(event.GetEventObject(), wxWindow);
        if (event.GetEventType() == wxEVT_PAINT && window->GetName() == kPage)
            paintedVersion_ = Main().pvwPages.Version();
        if (event.GetEventType() == wxEVT_PAINT && window == dragged_)
            ++paints_;
        const bool isIdle = event.GetEventType() == wxEVT_IDLE;
        if (isIdle && changed_ && Main().pvwPages.Version() != oldVersion_ && IsPagePainted())
            NoteYear();
        return Event_Skip;
    }

private:
    static constexpr const char* kPage = "pvwPages";

    bool IsPagePainted() { return paintedVersion_ == Main().pvwPages.Version(); }

    bool IsReady(wxTopLevelWindow& window)
    {
        const wxWindow* const page = wxWindow::FindWindowByName(kPage, &window);
        if (!page->IsShownOnScreen())
            return true;
        const ui::Preview& pages = Main().pvwPages;
        return IsPagePainted() && !pages.Pages().empty() &&
               (task_ != Task::AllPages || !pages.NextUnseen());
    }

    void Perform(wxTopLevelWindow& window)
    {
        if (task_ == Task::Year)
            return ChangeYear();
        if (task_ == Task::Drag)
            Drag(*wxWindow::FindWindowByName(kPage, &window));
        if (task_ == Task::Outline)
            OpenSheet();
        if (task_ == Task::Dialog)
            MeasureDialog();
        window.Close();
    }

    void ChangeYear()
    {
        oldVersion_ = paintedVersion_;
        changed_ = Clock::now();
        wxDynamicCast(wxWindow::FindWindowByName(Main().txtYear.name), wxTextCtrl)
            ->SetValue(std::to_string(kFirstYear + times_.size()));
    }

    void NoteYear()
    {
        times_.push_back(Clock::now() - *changed_);
        changed_.reset();
        if (times_.size() < static_cast<std::size_t>(count_))
            return CallAfter([this] { ChangeYear(); });
        PrintMedian();
        GetTopWindow()->Close();
    }

    static void Send(wxWindow& window, wxEventType type, wxPoint place)
    {
        wxMouseEvent event(type);
        event.SetEventObject(&window);
        event.SetPosition(place);
        event.m_leftDown = true;
        window.GetEventHandler()->ProcessEvent(event);
    }

    void Drag(wxWindow& page)
    {
        wxKeyEvent key(wxEVT_KEY_DOWN);
        key.SetEventObject(&page);
        for (const char code : {'1', '+', '+', '+', '+', '+', '+', '+'}) {
            key.m_keyCode = code;
            page.GetEventHandler()->ProcessEvent(key);
        }
        MeasureDrag(page, {kDragged, kDragged}, {-20, -20});
    }

    void MeasureDrag(wxWindow& window, wxPoint from, wxPoint way)
    {
        window.Update();
        dragged_ = &window;
        Send(window, wxEVT_LEFT_DOWN, from);
        for (int i = 1; i <= count_; ++i) {
            const auto start = Clock::now();
            Send(window, wxEVT_MOTION, i % 2 == 0 ? from : from + way);
            window.Update();
            times_.push_back(Clock::now() - start);
        }
        Send(window, wxEVT_LEFT_UP, from);
        dragged_ = nullptr;
        if (paints_ < count_)
            std::fprintf(stderr, "painted only %d times\n", paints_);
        else
            PrintMedian();
    }

    /// Opens the parameter dialog of the first template and drags the days there.
    void OpenSheet()
    {
        Main().cboTemplateFile.Select(0);
        Main().cboTemplateFile_Click();
        const auto sheet = [](wxTopLevelWindow& dialog) {
            return wxWindow::FindWindowByName("pvwSheet", &dialog);
        };
        painted_.Call(
            CLASSINFO(wxDialog),
            [this, sheet](wxTopLevelWindow& dialog) {
                const wxPoint day = PlaceOfDays(*sheet(dialog), dialog);
                MeasureDrag(*sheet(dialog), day, {kCellAway, 0});
                dialog.Close();
            },
            [](wxTopLevelWindow& dialog) {
                const auto* const hint = wxWindow::FindWindowByName("lblSheet", &dialog);
                return !hint->GetLabel().empty(); // the sheet has been read
            });
        Main().cmdModify_Click();
    }

    /// Where dragging moves the first cell of the days; what was moved is moved back.
    static wxPoint PlaceOfDays(wxWindow& sheet, wxTopLevelWindow& dialog)
    {
        const auto* const field =
            wxDynamicCast(wxWindow::FindWindowByName("txtMFirstCellofDay", &dialog), wxTextCtrl);
        const wxString before = field->GetValue();
        const auto drag = [&](wxPoint from, wxPoint to) {
            Send(sheet, wxEVT_LEFT_DOWN, from);
            Send(sheet, wxEVT_MOTION, to);
            Send(sheet, wxEVT_LEFT_UP, to);
        };
        for (int y = 0; y < sheet.GetClientSize().y; y += 8) {
            const wxPoint from(kCellAway, y);
            const wxPoint to(2 * kCellAway, y);
            drag(from, to);
            if (field->GetValue() == before)
                continue;
            drag(to, from);
            return from;
        }
        return {};
    }

    void PrintMedian()
    {
        std::sort(times_.begin(), times_.end());
        const std::chrono::duration<double, std::milli> median = times_[times_.size() / 2];
        std::fprintf(stderr, "%.1f\n", median.count());
    }

    void MeasureDialog()
    {
        const auto names = FullTables(count_);
        ui::wx::WxDesktop desktop({}, Main().CurrentLocations().settingsFile);
        const auto start = Clock::now();
        Clock::duration time{};
        ui::ParameterForm form(Main().working, names, {}, engines_, desktop);
        painted_.Call(CLASSINFO(wxDialog), [&](wxTopLevelWindow& dialog) {
            time = Clock::now() - start;
            dialog.Close();
        });
        desktop.ShowModal(form);
        std::fprintf(stderr, "%.1f\n", std::chrono::duration<double, std::milli>(time).count());
    }

    static constexpr int kFirstYear = 2001;
    static constexpr int kDragged = 200;
    static constexpr int kCellAway = 100;

    const Task task_;
    const int count_;
    engines::InstalledEngines engines_;
    WhenPainted painted_;
    std::uint64_t paintedVersion_ = 0;
    std::uint64_t oldVersion_ = 0;
    const wxWindow* dragged_ = nullptr;
    int paints_ = 0; ///< of the window that is dragged in
    std::optional<Clock::time_point> changed_;
    std::vector<Clock::duration> times_;
};

} // namespace

int main(int argc, char** argv)
{
    const std::map<std::string, Task> tasks = {
        {"main", Task::Start}, {"pages", Task::AllPages},  {"year", Task::Year},
        {"drag", Task::Drag},  {"outline", Task::Outline}, {"parameters", Task::Dialog}};
    const std::string mode = argc > 1 ? argv[1] : "";
    const auto task = tasks.find(mode);
    if (mode == "bare")
        wxApp::SetInstance(new BareApplication);
    else if (task != tasks.end())
        wxApp::SetInstance(
            new MeasuredApplication(task->second, argc > 2 ? std::atoi(argv[2]) : 1));
    else {
        std::fputs("usage: window_bench bare | main | pages | year COUNT | drag COUNT | "
                   "outline COUNT | parameters COUNT\n",
                   stderr);
        return 2;
    }
    int one = 1;
    return wxEntry(one, argv);
}
