#include "ui/wx/main/preview_pane.h"

#include "ui/wx/main/proposal_bar.h"
#include "ui/wx/native/native.h"
#include "ui/wx/native/text.h"
#include "ui/wx/preview/print_pages.h"
#include "ui/wx/widgets.h"

#include <wx/app.h>
#include <wx/sizer.h>

#include <algorithm>

namespace orrery::ui::wx {
namespace {

constexpr auto kQuick = std::chrono::milliseconds(100);
constexpr auto kPause = std::chrono::milliseconds(400); // after which typing has ended

// Dialog units.
constexpr int kLeastWidth = 150;
constexpr int kLeastHeight = 90;

} // namespace

PreviewPane::PreviewPane(wxWindow& parent, MainForm& form, Binder& binder)
    : wxPanel(&parent), form_(form), binder_(binder), timer_(this)
{
    Preview& preview = form.pvwPages;
    wxSizer* const bar = MakeProposalBar(*this, form, binder); // the first of the tab order
    strip_ = new PageStrip(*this, preview, pictures_,
                           [this](std::size_t page) { Select(static_cast<std::ptrdiff_t>(page)); });
    view_ = new PageView(
        *this, preview, pictures_, [this](std::ptrdiff_t pages) { Turn(pages); },
        [this] { Print(); });
    view_->SetMinSize(ConvertDialogToPixels(wxSize(kLeastWidth, kLeastHeight)));
    binder.BindControl(preview, *view_, [this] { Outdate(); });

    auto* const pages = new wxBoxSizer(wxHORIZONTAL);
    pages->Add(strip_, wxSizerFlags().Expand());
    pages->Add(view_, wxSizerFlags(1).Expand());
    auto* const column = new wxBoxSizer(wxVERTICAL);
    column->Add(bar, wxSizerFlags().Expand());
    column->Add(pages, wxSizerFlags(1).Expand());
    column->Add(AddNote(*this, binder, form.lblNotes), wxSizerFlags().Expand().Border());
    SetSizer(column);

    Bind(wxEVT_IDLE, &PreviewPane::OnIdle, this);
    Bind(wxEVT_TIMER, [this](wxTimerEvent&) { LookAgain(); });
}

void PreviewPane::Outdate()
{
    isOutdated_ = true;
    if (lastUpdate_ > kQuick) // a template that takes long waits until nothing is typed
        timer_.StartOnce(static_cast<int>(kPause.count()));
    else
        wxWakeUpIdle();
}

void PreviewPane::Print()
{
    LookAgain();
    PrintPages(*wxGetTopLevelParent(this), form_.pvwPages, pictures_);
}

void PreviewPane::OnIdle(wxIdleEvent& event)
{
    event.Skip();
    if (!IsShown())
        return;
    if (isOutdated_ && !timer_.IsRunning()) {
        LookAgain();
        event.RequestMore();
    }
    else if (strip_->PaintNext()) {
        form_.ShowNotes();
        binder_.Show();
        event.RequestMore();
    }
}

void PreviewPane::LookAgain()
{
    isOutdated_ = false;
    const auto begin = std::chrono::steady_clock::now();
    const auto version = form_.pvwPages.Version();
    form_.RefreshPreview();
    if (form_.pvwPages.Version() != version) {
        ShowState();
        lastUpdate_ = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - begin);
    }
}

void PreviewPane::ShowState()
{
    strip_->ShowState();
    view_->ShowState();
    SetAccessibleName(*view_, ToWx(form_.pvwPages.Description()));
    binder_.Show();
}

void PreviewPane::Turn(std::ptrdiff_t pages)
{
    Select(static_cast<std::ptrdiff_t>(form_.pvwPages.Selected()) + pages);
}

void PreviewPane::Select(std::ptrdiff_t page)
{
    form_.pvwPages.Select(page);
    ShowState();
    view_->SetFocus();
}

} // namespace orrery::ui::wx
