#pragma once

#include "ui/desktop.h"
#include "util/shell.h"

#include <wx/timer.h>
#include <wx/window.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orrery::ui::wx {

/// The desktop of the window program: message boxes, dialogs and the shell.
class WxDesktop : public Desktop {
public:
    /// `helpFolder` contains the help; `settingsFile` stores the positions of windows.
    WxDesktop(std::string helpFolder, std::string settingsFile);

    /// `repaint` shows the state of the main window while a command is running.
    void OnRepaint(std::function<void()> repaint) { repaint_ = std::move(repaint); }

    void Report(const std::string& text) override;
    void ShowMessage(const std::string& text) override;
    bool Ask(const std::string& question) override;
    void SetHourglass(bool on) override;
    void Repaint(Painting painting) override;
    void LetPress(const Button& button) override;
    void Open(const std::string& fileOrAddress) override;
    void Copy(const std::string& text) override;
    void ShowHelp(const std::string& page) override;
    void ShowModal(ParameterForm& form) override;
    void ShowModal(HolidayForm& form) override;
    void ShowModal(CountryForm& form) override;
    void ShowModal(OwnDayForm& form) override;
    void ShowModal(ImportForm& form) override;
    void ShowModal(TipForm& form) override;
    void ShowModal(AboutForm& form) override;

private:
    /// Asks again and again whether the openers that were started have ended.
    class OpenersTimer : public wxTimer {
    public:
        explicit OpenersTimer(WxDesktop& desktop) : desktop_(desktop) {}
        void Notify() override { desktop_.WatchOpeners(); }

    private:
        WxDesktop& desktop_;
    };
    void WatchOpeners();

    const std::string helpFolder_;
    const std::string settingsFile_;
    std::function<void()> repaint_;
    std::chrono::steady_clock::time_point painted_;
    std::vector<std::unique_ptr<util::ShellOpening>> openers_; // that have not ended
    OpenersTimer openersTimer_{*this};
};

} // namespace orrery::ui::wx
