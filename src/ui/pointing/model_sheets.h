#pragma once

#include "book/engines.h"
#include "book/look/workbook_view.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The sheets of a template, to be pointed at. The template is opened when something is first
/// asked for. Nothing here throws: what cannot be shown has a sentence in its place.
class ModelSheets {
public:
    /// `now` is that of the formulas. The engines outlive the object.
    ModelSheets(book::Engines& engines, std::filesystem::path templatePath, double now);

    /// The worksheets that a user can see, in the workbook's order; none if it cannot be read.
    std::vector<std::string> Names();
    /// The workbook, or nullptr if it cannot be read.
    book::WorkbookView* View();
    /// Why it cannot be read; empty if it can.
    const std::string& Sentence() const { return sentence_; }

    /// Shows a sheet with its used cells and at least those. It stays laid out until another sheet
    /// is shown, or more of it.
    void Show(const std::string& sheet, const book::CellRange& atLeast);
    /// What is shown, or nullptr.
    look::SheetPicture* Picture() { return picture_.get(); }
    /// Why nothing is shown.
    const std::string& PictureSentence() const { return pictureSentence_; }
    /// Rises whenever something else is shown.
    std::uint64_t Version() const { return version_; }
    /// The text of a shown cell; empty if it has none.
    std::string TextAt(book::CellAddress cell) const;
    /// The merged cells that the cell belongs to, or the cell itself.
    book::CellRange MergedAt(book::CellAddress cell) const;

private:
    void LayOut(std::size_t sheet, const book::CellRange& range);

    book::Engines& engines_;
    const std::filesystem::path path_;
    const double now_;
    look::FontTables fonts_;
    bool isOpened_ = false;
    std::unique_ptr<book::WorkbookView> view_;
    std::string sentence_;
    std::unique_ptr<look::SheetPicture> picture_;
    std::optional<std::size_t> shown_; ///< index of the sheet
    std::string pictureSentence_;
    std::uint64_t version_ = 0;
};

} // namespace orrery::ui
