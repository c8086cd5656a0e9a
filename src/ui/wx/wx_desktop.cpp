#include "ui/wx/wx_desktop.h"

#include "ui/controls.h"
#include "ui/wx/dialogs.h"
#include "ui/wx/help.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "util/error.h"
#include "util/error_report.h"
#include "util/error_text.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/evtloop.h>
#include <wx/msgdlg.h>
#include <wx/utils.h>

#include <utility>

namespace orrery::ui::wx {
namespace {

/// The active dialog or window, the parent of new boxes and dialogs.
wxWindow* TopWindow()
{
    wxWindow* top = wxTheApp->GetTopWindow();
    for (wxWindow* const window : wxTopLevelWindows) {
        const auto* const dialog = dynamic_cast<wxDialog*>(window);
        if (dialog != nullptr && dialog->IsModal())
            top = window; // later dialogs are above earlier ones
    }
    return top;
}

int ShowBox(const std::string& text, long style)
{
    return ShowMessageBox(TopWindow(), LinesToWx(text), kProductName, style);
}

} // namespace

WxDesktop::WxDesktop(std::string helpFolder, std::string settingsFile)
    : helpFolder_(std::move(helpFolder)), settingsFile_(std::move(settingsFile))
{
}

void WxDesktop::Report(const std::string& text)
{
    ShowBox(util::ErrorReportText(text), wxOK | wxICON_EXCLAMATION);
}

void WxDesktop::ShowMessage(const std::string& text)
{
    ShowBox(text, wxOK | wxICON_EXCLAMATION);
}

bool WxDesktop::Ask(const std::string& question)
{
    return ShowBox(question, wxYES_NO | wxICON_QUESTION) == wxID_YES;
}

void WxDesktop::SetHourglass(bool on)
{
    if (on)
        wxBeginBusyCursor();
    else
        wxEndBusyCursor();
}

void WxDesktop::Repaint(Painting painting)
{
    // A quick run has more steps than anyone can see, and every repaint takes time.
    constexpr auto kShortest = std::chrono::milliseconds(40);
    const auto now = std::chrono::steady_clock::now();
    if (painting == Painting::WhenDue && now - painted_ < kShortest)
        return;
    painted_ = now;
    if (repaint_)
        repaint_();
    if (auto* const loop = wxEventLoopBase::GetActive())
        loop->YieldFor(wxEVT_CATEGORY_UI); // keys and clicks wait until the command ends
}

void WxDesktop::LetPress(const Button& button)
{
    if (repaint_)
        repaint_();
    if (wxWindow* const window = wxWindow::FindWindowByName(ToWx(button.name), TopWindow()))
        HandleInputOf(*window);
}

void WxDesktop::Open(const std::string& fileOrAddress)
{
    constexpr int kStep = 50; // milliseconds
    try {
        auto opener = util::StartShellOpen(fileOrAddress);
        if (!opener)
            return;
        openers_.push_back(std::move(opener));
        openersTimer_.Start(kStep);
    }
    catch (const std::exception& error) {
        Report(util::ErrorText(error));
    }
}

void WxDesktop::WatchOpeners()
{
    std::vector<std::string> failures;
    std::erase_if(openers_, [&failures](const auto& opener) {
        try {
            return opener->HasEnded();
        }
        catch (const std::exception& error) {
            failures.push_back(util::ErrorText(error));
            return true;
        }
    });
    if (openers_.empty())
        openersTimer_.Stop();
    for (const std::string& failure : failures)
        Report(failure);
}

void WxDesktop::Copy(const std::string& text)
{
    const wxClipboardLocker clipboard;
    if (!clipboard)
        return; // another program holds it
    wxTheClipboard->SetData(new wxTextDataObject(ToWx(text)));
    wxTheClipboard->Flush(); // the text outlives this program
}

void WxDesktop::ShowHelp(const std::string& page)
{
    OpenHelp(helpFolder_, page, *this);
}

void WxDesktop::ShowModal(ParameterForm& form)
{
    ShowParameterDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(HolidayForm& form)
{
    ShowHolidayDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(CountryForm& form)
{
    ShowCountryDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(OwnDayForm& form)
{
    ShowOwnDayDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(ImportForm& form)
{
    ShowImportDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(TipForm& form)
{
    ShowTipDialog({TopWindow(), *this, settingsFile_}, form);
}

void WxDesktop::ShowModal(AboutForm& form)
{
    ShowAboutDialog({TopWindow(), *this, settingsFile_}, form);
}

} // namespace orrery::ui::wx
