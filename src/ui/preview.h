#pragma once

#include "app/calendar_view.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"
#include "ui/controls.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// What a preview's calendar is made of. A file that was saved again makes another choice.
struct PreviewChoice {
    std::filesystem::path templatePath;
    std::filesystem::file_time_type changed;
    std::string yearText;
    model::ParameterSets sets;
    bool isExample = false; ///< nobody has chosen this
    friend bool operator==(const PreviewChoice&, const PreviewChoice&) = default;
};

/// A sheet of the calendar.
struct PreviewPage {
    std::string title;      ///< the sheet's name
    std::int16_t month = 0; ///< [1:12], or 0 for the year's
    std::size_t sheet = 0;  ///< index in the calendar
    /// What would go wrong on it; absent until its picture was made once.
    std::optional<std::vector<std::string>> notes;
};

/// The sheets of the calendar that a run would make, to be looked at: twelve months, then the year.
/// Pictures are made when they are asked for. Nothing here throws: what cannot be shown has a
/// sentence in its place.
class Preview : public Control {
public:
    /// How many papers of a page are shown.
    static constexpr std::size_t kMostPapers = 20;

    Preview(std::string controlName, book::Engines& engines);

    /// Shows the calendar of a choice; the page stays the same month's if it has it. Does nothing
    /// if the choice is the one on show. `now` is that of the formulas, `names` those of the sets.
    void Show(const PreviewChoice& choice, const model::NameTables& names, double now);
    /// Shows a sentence instead.
    void ShowSentence(std::string sentence);

    /// Rises whenever other pages are on show.
    std::uint64_t Version() const { return version_; }
    /// Why there are no pages; empty if there are.
    const std::string& Sentence() const { return sentence_; }
    bool IsExample() const { return choice_ && choice_->isExample; }
    const std::vector<PreviewPage>& Pages() const { return pages_; }
    std::size_t Selected() const { return selected_; }
    /// Selects a page; one beyond the ends selects the page there.
    void Select(std::ptrdiff_t page);
    /// The picture of a page, or nullptr if it cannot be made; then a note tells why. Valid until
    /// another page's is asked for.
    look::SheetPicture* Picture(std::size_t page);
    /// The next page whose picture was never made; nothing if all were.
    std::optional<std::size_t> NextUnseen() const;
    /// What would go wrong, with the page it concerns, one line each.
    std::vector<std::string> Notes() const;
    /// What a screen reader tells: "January, page 1 of 13".
    std::string Description() const;

private:
    void Clear();
    void Make(const model::NameTables& names);
    void ListPages();
    std::vector<std::string> NotesOf(const PreviewPage& page);

    book::Engines& engines_;
    look::FontTables fonts_;
    std::optional<PreviewChoice> choice_;
    double now_ = 0;
    std::int16_t year_ = 0;
    std::unique_ptr<app::CalendarView> calendar_;
    std::vector<PreviewPage> pages_;
    std::size_t selected_ = 0;
    std::unique_ptr<look::SheetPicture> picture_; ///< of one page
    std::size_t pictured_ = 0;
    std::string sentence_;
    std::uint64_t version_ = 0;
};

} // namespace orrery::ui
