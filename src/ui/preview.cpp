#include "ui/preview.h"

#include "app/calendar_notes.h"
#include "generate/run.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace orrery::ui {
namespace {

constexpr std::int16_t kLastMonth = 12;

} // namespace

Preview::Preview(std::string controlName, book::Engines& engines)
    : Control(std::move(controlName)), engines_(engines)
{
}

void Preview::Show(const PreviewChoice& choice, const model::NameTables& names, double now)
{
    if (choice_ == choice)
        return;
    choice_ = choice;
    now_ = now;
    const int month = pages_.empty() ? 1 : pages_[selected_].month;
    Clear();
    try {
        Make(names);
    }
    catch (const std::exception& error) {
        sentence_ = util::JoinLines(util::ErrorText(error));
    }
    const auto same = std::find_if(pages_.begin(), pages_.end(), [month](const PreviewPage& page) {
        return page.month == month;
    });
    selected_ = same == pages_.end() ? 0 : static_cast<std::size_t>(same - pages_.begin());
}

void Preview::ShowSentence(std::string sentence)
{
    if (!choice_ && sentence == sentence_)
        return;
    choice_.reset();
    Clear();
    sentence_ = std::move(sentence);
}

void Preview::Clear()
{
    ++version_;
    picture_.reset();
    pages_.clear();
    calendar_.reset();
    selected_ = 0;
    sentence_.clear();
}

void Preview::Make(const model::NameTables& names)
{
    const auto year = generate::ReadYear(choice_->yearText);
    if (!year) {
        sentence_ = generate::kNoYearMessage;
        return;
    }
    year_ = *year;
    calendar_ = std::make_unique<app::CalendarView>(
        engines_, app::CalendarRequest{choice_->templatePath, year_, choice_->sets, names});
    calendar_->Sheets().CloseFile(); // the user may save the template in its own application
    ListPages();
    if (!pages_.empty())
        return;
    const auto& findings = calendar_->Findings();
    sentence_ = findings.empty() ? "The parameters of this template make no calendar."
                                 : findings.front().text;
}

void Preview::ListPages()
{
    for (std::int16_t place = 1; place <= kLastMonth + 1; ++place) {
        const auto month = static_cast<std::int16_t>(place % (kLastMonth + 1)); // the year is last
        const auto sheet = calendar_->SheetOf(month);
        if (sheet)
            pages_.push_back(
                {calendar_->Sheets().Workbook().sheets[*sheet].name, month, *sheet, {}});
    }
}

void Preview::Select(std::ptrdiff_t page)
{
    const auto last = static_cast<std::ptrdiff_t>(pages_.size()) - 1;
    selected_ = static_cast<std::size_t>(
        std::clamp<std::ptrdiff_t>(page, 0, std::max<std::ptrdiff_t>(last, 0)));
}

look::SheetPicture* Preview::Picture(std::size_t page)
{
    if (picture_ && pictured_ == page)
        return picture_.get();
    picture_.reset();
    PreviewPage& wanted = pages_.at(page);
    try {
        picture_ = std::make_unique<look::SheetPicture>(
            calendar_->Sheets(), wanted.sheet, fonts_,
            look::PictureOptions{now_, util::FromPath(choice_->templatePath.filename()),
                                 util::WithTrailingSeparator(
                                     util::ParentFolder(util::FromPath(choice_->templatePath)))});
        calendar_->Sheets().CloseFile();
        pictured_ = page;
        if (!wanted.notes)
            wanted.notes = NotesOf(wanted);
    }
    catch (const std::exception& error) {
        wanted.notes = {{util::JoinLines(util::ErrorText(error))}};
        return nullptr;
    }
    return picture_.get();
}

std::vector<std::string> Preview::NotesOf(const PreviewPage& page)
{
    std::vector<std::string> notes;
    if (const std::size_t papers = picture_->Layout().pages.size(); papers > kMostPapers)
        notes.push_back("prints on " + std::to_string(papers) + " sheets of paper; the first " +
                        std::to_string(kMostPapers) + " are shown.");
    const auto& filled = calendar_->Filled();
    const auto found =
        std::find_if(filled.begin(), filled.end(),
                     [&](const generate::TrialSheet& sheet) { return sheet.month == page.month; });
    if (found != filled.end()) {
        const auto hidden = app::FindHiddenNames(*found, year_, *picture_);
        notes.insert(notes.end(), hidden.begin(), hidden.end());
    }
    return notes;
}

std::optional<std::size_t> Preview::NextUnseen() const
{
    const auto unseen = std::find_if(pages_.begin(), pages_.end(),
                                     [](const PreviewPage& page) { return !page.notes; });
    if (unseen == pages_.end())
        return std::nullopt;
    return static_cast<std::size_t>(unseen - pages_.begin());
}

std::vector<std::string> Preview::Notes() const
{
    std::vector<std::string> notes;
    if (calendar_ && !pages_.empty()) {
        for (const generate::Finding& finding : calendar_->Findings())
            notes.push_back(finding.text);
    }
    for (const PreviewPage& page : pages_) {
        for (const std::string& note : page.notes.value_or(std::vector<std::string>()))
            notes.push_back(page.title + ": " + note);
    }
    return notes;
}

std::string Preview::Description() const
{
    if (pages_.empty())
        return sentence_;
    return pages_[selected_].title + ", page " + std::to_string(selected_ + 1) + " of " +
           std::to_string(pages_.size());
}

} // namespace orrery::ui
