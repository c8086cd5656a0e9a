#include "look/advisor/seen_sheet.h"

#include "look/display/sheet_display.h"

#include <algorithm>
#include <cstdlib>
#include <tuple>
#include <utility>

namespace orrery::look {
namespace {

constexpr std::int32_t kMostRows = 400;
constexpr std::int32_t kMostColumns = 256;
constexpr double kDefaultHeight = 15;
constexpr double kDefaultWidth = 9;

/// A number format, where those of numbers and of days are one: only filled cells may have it.
std::string KindOfFormat(const std::string& format)
{
    const bool isOfDays = format.find_first_not_of("dD0@. ") == std::string::npos;
    return isOfDays ? "General" : format;
}

auto Kind(const book::CellStyle& style)
{
    return std::tuple(style.font.name, style.font.size, style.alignment.horizontal,
                      style.alignment.vertical, style.alignment.wrap, style.alignment.rotation,
                      KindOfFormat(style.numberFormat));
}

bool HasLines(const book::Border& border)
{
    const auto isLine = [](const book::BorderLine& line) {
        return line.style != book::LineStyle::None;
    };
    return isLine(border.left) || isLine(border.right) || isLine(border.top) ||
           isLine(border.bottom);
}

/// The kind of each style; the first is that of plain cells, which have no lines either.
std::vector<std::int32_t> KindsOf(const std::vector<book::CellStyle>& styles)
{
    std::map<decltype(Kind(styles.front())), std::int32_t> kinds;
    std::vector<std::int32_t> kindOf;
    constexpr std::int32_t lined = 1;
    for (const book::CellStyle& style : styles) {
        const auto next = static_cast<std::int32_t>(kinds.size()) + lined;
        const std::int32_t kind =
            kinds.try_emplace(Kind(style), kinds.empty() ? SeenSheet::kPlain : next).first->second;
        kindOf.push_back(kind == SeenSheet::kPlain && HasLines(style.border) ? lined : kind);
    }
    return kindOf;
}

/// The number of a day that is stored as a text.
std::optional<double> DayOf(const std::string& text)
{
    const bool isShort = text.size() == 1 || text.size() == 2;
    if (!isShort || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::atoi(text.c_str());
}

} // namespace

SeenSheet::SeenSheet(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator)
    : look_(view.Sheet(sheet))
{
    Measure();
    ReadSizes();
    ReadSignatures();
    ReadContents(view, sheet, evaluator);
}

void SeenSheet::Measure()
{
    for (const book::Cell& cell : look_.cells) {
        rows_ = std::max(rows_, cell.address.row);
        columns_ = std::max(columns_, cell.address.column);
    }
    for (const book::CellRange& merge : look_.merges) {
        rows_ = std::max(rows_, merge.last.row);
        columns_ = std::max(columns_, merge.last.column);
    }
    rows_ = std::min(rows_, kMostRows);
    columns_ = std::min(columns_, kMostColumns);
}

void SeenSheet::ReadSizes()
{
    widths_.assign(static_cast<std::size_t>(columns_) + 1,
                   look_.standardWidth.value_or(kDefaultWidth));
    for (const book::ColumnLook& column : look_.columns) {
        for (std::int32_t i = column.first; i <= std::min(column.last, columns_); ++i) {
            if (column.isHidden)
                widths_[static_cast<std::size_t>(i)] = 0;
            else if (column.width)
                widths_[static_cast<std::size_t>(i)] = *column.width;
        }
    }
    heights_.assign(static_cast<std::size_t>(rows_) + 1,
                    look_.defaultRowHeight.value_or(kDefaultHeight));
    for (const book::RowLook& row : look_.rows) {
        if (row.row > rows_)
            break;
        if (row.isHidden)
            heights_[static_cast<std::size_t>(row.row)] = 0;
        else if (row.height)
            heights_[static_cast<std::size_t>(row.row)] = *row.height;
    }
}

void SeenSheet::ReadSignatures()
{
    const std::vector<std::int32_t> kindOf = KindsOf(look_.styles);
    const std::int32_t kinds = std::ranges::max(kindOf) + 1;
    signatures_.assign(static_cast<std::size_t>(rows_) * static_cast<std::size_t>(columns_),
                       kPlain);
    for (const book::ColumnLook& column : look_.columns) {
        for (std::int32_t i = column.first; i <= std::min(column.last, columns_); ++i) {
            for (std::int32_t row = 1; row <= rows_; ++row)
                signatures_[Index(row, i)] = kindOf[column.style];
        }
    }
    for (const book::RowLook& row : look_.rows) {
        for (std::int32_t i = 1; row.style && row.row <= rows_ && i <= columns_; ++i)
            signatures_[Index(row.row, i)] = kindOf[*row.style];
    }
    for (const book::Cell& cell : look_.cells) {
        if (cell.address.row <= rows_ && cell.address.column <= columns_)
            signatures_[Index(cell.address.row, cell.address.column)] = kindOf[cell.style];
    }
    std::map<std::tuple<std::int32_t, std::int32_t, std::int32_t>, std::int32_t> merged;
    for (const book::CellRange& merge : look_.merges) {
        if (merge.last.row > rows_ || merge.last.column > columns_)
            continue;
        merges_.emplace(merge.first, merge);
        const auto shape =
            std::tuple(signatures_[Index(merge.first.row, merge.first.column)],
                       merge.last.row - merge.first.row, merge.last.column - merge.first.column);
        const auto next = kinds + static_cast<std::int32_t>(merged.size());
        for (std::int32_t row = merge.first.row; row <= merge.last.row; ++row) {
            for (std::int32_t column = merge.first.column; column <= merge.last.column; ++column)
                signatures_[Index(row, column)] = kCovered;
        }
        signatures_[Index(merge.first.row, merge.first.column)] =
            merged.try_emplace(shape, next).first->second;
    }
}

void SeenSheet::ReadContents(book::WorkbookView& view, std::size_t sheet, Evaluator& evaluator)
{
    SheetDisplay display(view, sheet, evaluator);
    for (const book::Cell& cell : look_.cells) {
        const bool isEmpty =
            cell.formula < 0 && std::holds_alternative<std::monostate>(cell.content);
        if (isEmpty || cell.address.row > rows_ || cell.address.column > columns_)
            continue;
        CellDisplay shown = display.Display(cell.address);
        if (shown.text.empty())
            continue;
        const auto number = shown.isNumber ? std::optional(shown.number) : DayOf(shown.text);
        contents_.emplace(cell.address, SeenContent{std::move(shown.text), number});
    }
}

std::size_t SeenSheet::Index(std::int32_t row, std::int32_t column) const
{
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column - 1);
}

std::int32_t SeenSheet::Signature(std::int32_t row, std::int32_t column) const
{
    const bool isInside = row >= 1 && row <= rows_ && column >= 1 && column <= columns_;
    return isInside ? signatures_[Index(row, column)] : kPlain;
}

const SeenContent* SeenSheet::Content(std::int32_t row, std::int32_t column) const
{
    const auto found = contents_.find({row, column});
    return found == contents_.end() ? nullptr : &found->second;
}

const std::string& SeenSheet::Text(std::int32_t row, std::int32_t column) const
{
    static const std::string none;
    const SeenContent* const content = Content(row, column);
    return content == nullptr ? none : content->text;
}

const book::CellStyle& SeenSheet::Style(std::int32_t row, std::int32_t column) const
{
    return look_.Style({row, column});
}

book::CellRange SeenSheet::Range(std::int32_t row, std::int32_t column) const
{
    const auto found = merges_.find({row, column});
    return found == merges_.end() ? book::CellRange{{row, column}, {row, column}} : found->second;
}

} // namespace orrery::look
