#include "ui/pointing/model_sheets.h"

#include "look/layout/lay_out.h"
#include "util/error_text.h"
#include "util/sentence.h"
#include "util/text.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace orrery::ui {
namespace {

using book::CellAddress;
using book::CellRange;

/// Cells around what is used, to be pointed at.
constexpr std::int32_t kSpareRows = 6;
constexpr std::int32_t kSpareColumns = 4;
/// The least and the most that is laid out.
constexpr CellAddress kLeast{20, 10};
constexpr CellAddress kMost{2000, 256};

std::string SentenceOf(const std::exception& error)
{
    std::string line;
    for (const std::string_view part : util::SplitLines(util::ErrorText(error)))
        line += (line.empty() ? "" : " ") + std::string(part);
    return line;
}

/// From A1 to what is used or asked for, and a little more.
CellRange RangeToShow(const CellRange& used, const CellRange& atLeast)
{
    const auto end = [](std::int32_t a, std::int32_t b, std::int32_t spare, std::int32_t least,
                        std::int32_t most) {
        return std::clamp(std::max(a, b) + spare, least, most);
    };
    return {
        {1, 1},
        {end(used.last.row, atLeast.last.row, kSpareRows, kLeast.row, kMost.row),
         end(used.last.column, atLeast.last.column, kSpareColumns, kLeast.column, kMost.column)}};
}

bool Covers(const CellRange& range, const CellRange& atLeast)
{
    return range.last.row >= std::min(atLeast.last.row, kMost.row) &&
           range.last.column >= std::min(atLeast.last.column, kMost.column);
}

} // namespace

ModelSheets::ModelSheets(book::Engines& engines, std::filesystem::path templatePath, double now)
    : engines_(engines), path_(std::move(templatePath)), now_(now)
{
}

book::WorkbookView* ModelSheets::View()
{
    if (!std::exchange(isOpened_, true)) {
        try {
            view_ = engines_.OpenView(path_);
        }
        catch (const std::exception& error) {
            sentence_ = SentenceOf(error);
        }
    }
    return view_.get();
}

std::vector<std::string> ModelSheets::Names()
{
    std::vector<std::string> names;
    if (View() == nullptr)
        return names;
    for (const book::SheetSummary& sheet : view_->Workbook().sheets) {
        if (sheet.kind == book::SheetKind::Worksheet && sheet.state == book::SheetState::Visible)
            names.push_back(sheet.name);
    }
    return names;
}

void ModelSheets::Show(const std::string& sheet, const CellRange& atLeast)
{
    const auto found = View() == nullptr ? std::nullopt : view_->FindSheet(sheet);
    if (found && found == shown_ && (!picture_ || Covers(picture_->Layout().range, atLeast)))
        return;
    std::string reason;
    if (view_ == nullptr)
        reason = sentence_;
    else if (sheet.empty())
        reason = "Please input sheet name.";
    else if (!found)
        reason = "The sheet " + util::Printable(sheet) + " does not exist.";
    if (!found && !shown_ && reason == pictureSentence_)
        return;
    ++version_;
    picture_.reset();
    shown_ = found;
    pictureSentence_ = reason;
    if (found)
        LayOut(*found, atLeast);
}

void ModelSheets::LayOut(std::size_t sheet, const CellRange& range)
{
    try {
        look::PictureOptions options;
        options.now = now_;
        options.range = RangeToShow(look::UsedRange(view_->Sheet(sheet)), range);
        picture_ = std::make_unique<look::SheetPicture>(*view_, sheet, fonts_, options);
        view_->CloseFile(); // the user may save the template in its own application
    }
    catch (const std::exception& error) {
        pictureSentence_ = SentenceOf(error);
    }
}

std::string ModelSheets::TextAt(CellAddress cell) const
{
    if (!picture_)
        return {};
    for (const look::CellBox& box : picture_->Layout().cells) {
        if (box.range.Contains(cell))
            return box.display.text;
    }
    return {};
}

CellRange ModelSheets::MergedAt(CellAddress cell) const
{
    if (view_ && shown_ && picture_) {
        for (const CellRange& merged : view_->Sheet(*shown_).merges) {
            if (merged.Contains(cell))
                return merged;
        }
    }
    return {cell, cell};
}

} // namespace orrery::ui
