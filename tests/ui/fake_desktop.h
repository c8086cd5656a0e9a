#pragma once

#include "ui/controls.h"
#include "ui/desktop.h"

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orrery::ui {

/// A desktop that logs every call by a form, in order, and acts as the user that the test
/// describes.
class FakeDesktop : public Desktop {
public:
    void Report(const std::string& text) override { calls.push_back("Report: " + text); }
    void ShowMessage(const std::string& text) override { calls.push_back("ShowMessage: " + text); }
    /// Gives the next answer; throws if the test expects no question.
    bool Ask(const std::string& question) override
    {
        calls.push_back("Ask: " + question);
        if (onAsk)
            onAsk();
        if (answers.empty())
            throw std::logic_error("unexpected question: " + question);
        const bool yes = answers.front();
        answers.pop_front();
        return yes;
    }
    void SetHourglass(bool on) override { calls.push_back(on ? "Hourglass on" : "Hourglass off"); }
    void Repaint(Painting /*painting*/) override
    {
        calls.emplace_back("Repaint");
        if (onRepaint)
            onRepaint();
    }
    void LetPress(const Button& button) override
    {
        calls.push_back("LetPress: " + button.name);
        if (onLetPress)
            onLetPress();
    }
    void Open(const std::string& fileOrAddress) override
    {
        calls.push_back("Open: " + fileOrAddress);
    }
    void Copy(const std::string& text) override { calls.push_back("Copy: " + text); }
    void ShowHelp(const std::string& page) override { calls.push_back("ShowHelp: " + page); }

    void ShowModal(ParameterForm& form) override { Show("frmParameter", onParameter, form); }
    void ShowModal(HolidayForm& form) override { Show("frmHoliday", onHoliday, form); }
    void ShowModal(CountryForm& form) override { Show("frmCountry", onCountry, form); }
    void ShowModal(OwnDayForm& form) override { Show("frmOwnDay", onOwnDay, form); }
    void ShowModal(ImportForm& form) override { Show("frmImport", onImport, form); }
    void ShowModal(TipForm& form) override { Show("frmTip", onTip, form); }
    void ShowModal(AboutForm& form) override { Show("frmAbout", onAbout, form); }

    /// Returns the calls since the last `TakeCalls`.
    std::vector<std::string> TakeCalls() { return std::exchange(calls, {}); }

    std::vector<std::string> calls; ///< such as "Report: File not found" or "ShowModal: frmTip"
    std::deque<bool> answers;       ///< to the next questions
    // What the user does in each dialog; nothing if empty.
    std::function<void(ParameterForm&)> onParameter;
    std::function<void(HolidayForm&)> onHoliday;
    std::function<void(CountryForm&)> onCountry;
    std::function<void(OwnDayForm&)> onOwnDay;
    std::function<void(ImportForm&)> onImport;
    std::function<void(TipForm&)> onTip;
    std::function<void(AboutForm&)> onAbout;
    std::function<void()> onAsk; ///< what else happens while a question is shown
    std::function<void()> onRepaint;
    std::function<void()> onLetPress;

private:
    template <typename Dialog>
    void Show(const char* name, const std::function<void(Dialog&)>& act, Dialog& form)
    {
        calls.push_back(std::string("ShowModal: ") + name);
        if (act)
            act(form);
    }
};

} // namespace orrery::ui
