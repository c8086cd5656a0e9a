// Opens windows and leaves as soon as they are on the screen: the cost of the whole process is
// measured from outside.
//
// usage: window_bench bare              a window with one button, and nothing else of the program
//        window_bench main              the main window, as a user starts it
//        window_bench parameters COUNT  the parameter dialog with COUNT lists of names; prints
//                                       the milliseconds that it takes to open
#include "engines/engine_choice.h"
#include "ui/parameter_form.h"
#include "ui/wx/application.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace {

using namespace orrery;
using Clock = std::chrono::steady_clock;

/// Calls a function once, when a window of the given kind has been painted and nothing is left to
/// do.
class WhenPainted : public wxEventFilter {
public:
    WhenPainted() { wxEvtHandler::AddFilter(this); }
    ~WhenPainted() override { wxEvtHandler::RemoveFilter(this); }

    using Function = std::function<void(wxTopLevelWindow&)>;

    void Call(const wxClassInfo* kind, Function function)
    {
        kind_ = kind;
        function_ = std::move(function);
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
        if (event.GetEventType() == wxEVT_IDLE && painted_ != nullptr && function_)
            std::exchange(function_, {})(*painted_);
        return Event_Skip;
    }

private:
    const wxClassInfo* kind_ = nullptr;
    Function function_;
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

/// The program itself, which leaves once its window is there.
class MeasuredApplication : public ui::wx::Application {
public:
    explicit MeasuredApplication(int lists)
        : Application(std::make_unique<engines::InstalledEngines>()), lists_(lists)
    {
    }

    bool OnInit() override
    {
        if (!Application::OnInit())
            return false;
        painted_.Call(CLASSINFO(wxFrame), [this](wxTopLevelWindow& window) {
            window.CallAfter([this, &window] {
                if (lists_ > 0)
                    MeasureDialog();
                window.Close();
            });
        });
        return true;
    }
    void OnInitCmdLine(wxCmdLineParser& /*parser*/) override {}
    bool OnCmdLineParsed(wxCmdLineParser& /*parser*/) override { return true; }

private:
    void MeasureDialog()
    {
        const auto names = FullTables(lists_);
        ui::wx::WxDesktop desktop({}, Main().CurrentLocations().settingsFile);
        const auto start = Clock::now();
        Clock::duration time{};
        ui::ParameterForm form(Main().working, names, {}, desktop);
        painted_.Call(CLASSINFO(wxDialog), [&](wxTopLevelWindow& dialog) {
            time = Clock::now() - start;
            dialog.Close();
        });
        desktop.ShowModal(form);
        std::fprintf(stderr, "%.1f\n", std::chrono::duration<double, std::milli>(time).count());
    }

    const int lists_;
    WhenPainted painted_;
};

} // namespace

int main(int argc, char** argv)
{
    const std::string mode = argc > 1 ? argv[1] : "";
    if (mode == "bare")
        wxApp::SetInstance(new BareApplication);
    else if (mode == "main")
        wxApp::SetInstance(new MeasuredApplication(0));
    else if (mode == "parameters" && argc == 3)
        wxApp::SetInstance(new MeasuredApplication(std::atoi(argv[2])));
    else {
        std::fputs("usage: window_bench bare | main | parameters COUNT\n", stderr);
        return 2;
    }
    int one = 1;
    return wxEntry(one, argv);
}
