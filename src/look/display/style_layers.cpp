#include "look/display/style_layers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace orrery::look {
namespace {

using book::CellAddress;
using book::CellRange;
using book::PartialStyle;
using book::Table;
using book::TablePart;

template <typename Type> void Take(std::optional<Type>& value, const std::optional<Type>& over)
{
    if (over)
        value = over;
}

template <typename Type> void Take(Type& value, const std::optional<Type>& over)
{
    if (over)
        value = *over;
}

void TakeLine(book::BorderLine& line, const std::optional<book::BorderLine>& under)
{
    if (under && line.style == book::LineStyle::None)
        line = *under;
}

/// The part of a table style as it looks at one cell of its region: lines inside of the region are
/// the inner ones.
PartialStyle AtCell(const PartialStyle& part, const CellRange& region, CellAddress cell)
{
    PartialStyle style = part;
    style.left = cell.column == region.first.column ? part.left : part.innerVertical;
    style.right = cell.column == region.last.column ? part.right : part.innerVertical;
    style.top = cell.row == region.first.row ? part.top : part.innerHorizontal;
    style.bottom = cell.row == region.last.row ? part.bottom : part.innerHorizontal;
    return style;
}

void Merge(PartialStyle& style, const PartialStyle& over)
{
    Take(style.bold, over.bold);
    Take(style.italic, over.italic);
    Take(style.strike, over.strike);
    Take(style.underline, over.underline);
    Take(style.fontColor, over.fontColor);
    Take(style.fill, over.fill);
    Take(style.left, over.left);
    Take(style.right, over.right);
    Take(style.top, over.top);
    Take(style.bottom, over.bottom);
    Take(style.numberFormat, over.numberFormat);
}

/// The stripe of a place in a table's body, counted from 0: its number (0 or 1) and its first and
/// last place.
struct Stripe {
    int number = 0;
    std::int32_t first = 0;
    std::int32_t last = 0;
};

Stripe StripeAt(std::int32_t place, const std::array<std::int32_t, 2>& sizes)
{
    const std::int32_t one = std::max(sizes[0], 1);
    const std::int32_t both = one + std::max(sizes[1], 1);
    const std::int32_t start = place / both * both;
    if (place - start < one)
        return {0, start, start + one - 1};
    return {1, start + one, start + both - 1};
}

/// Gathers the parts of a table style that meet a cell.
class TableCell {
public:
    TableCell(const Table& table, CellAddress cell) : table_(table), cell_(cell)
    {
        body_ = table.range;
        body_.first.row += table.headerRows;
        body_.last.row -= table.totalRows;
    }

    PartialStyle Style()
    {
        Add(TablePart::WholeTable, table_.range);
        AddStripes();
        const CellRange& all = table_.range;
        if (table_.showsLastColumn)
            Add(TablePart::LastColumn, {{all.first.row, all.last.column}, all.last});
        if (table_.showsFirstColumn)
            Add(TablePart::FirstColumn, {all.first, {all.last.row, all.first.column}});
        AddRows(TablePart::HeaderRow, {all.first, {body_.first.row - 1, all.last.column}},
                TablePart::FirstHeaderCell, TablePart::LastHeaderCell);
        AddRows(TablePart::TotalRow, {{body_.last.row + 1, all.first.column}, all.last},
                TablePart::FirstTotalCell, TablePart::LastTotalCell);
        return style_;
    }

private:
    void Add(TablePart part, const CellRange& region)
    {
        const auto found = table_.style.parts.find(part);
        if (found != table_.style.parts.end() && region.Contains(cell_))
            Merge(style_, AtCell(found->second, region, cell_));
    }

    void AddStripes()
    {
        if (!body_.Contains(cell_))
            return;
        if (table_.showsColumnStripes) {
            const auto stripe =
                StripeAt(cell_.column - body_.first.column, table_.style.columnStripe);
            CellRange region = body_;
            region.first.column = body_.first.column + stripe.first;
            region.last.column = std::min(body_.first.column + stripe.last, body_.last.column);
            Add(stripe.number == 0 ? TablePart::FirstColumnStripe : TablePart::SecondColumnStripe,
                region);
        }
        if (table_.showsRowStripes) {
            const auto stripe = StripeAt(cell_.row - body_.first.row, table_.style.rowStripe);
            CellRange region = body_;
            region.first.row = body_.first.row + stripe.first;
            region.last.row = std::min(body_.first.row + stripe.last, body_.last.row);
            Add(stripe.number == 0 ? TablePart::FirstRowStripe : TablePart::SecondRowStripe,
                region);
        }
    }

    void AddRows(TablePart rows, const CellRange& region, TablePart firstCell, TablePart lastCell)
    {
        if (!region.Contains(cell_))
            return;
        Add(rows, region);
        if (table_.showsFirstColumn)
            Add(firstCell, {region.first, {region.last.row, region.first.column}});
        if (table_.showsLastColumn)
            Add(lastCell, {{region.first.row, region.last.column}, region.last});
    }

    const Table& table_;
    CellAddress cell_;
    CellRange body_;
    PartialStyle style_;
};

/// The share of a pattern that has its foreground colour, in the order of `book::FillPattern`.
constexpr std::array<double, 19> kCoverage = {0,    1,    0.5,  0.75,  0.25,  0.5,  0.5,
                                              0.5,  0.5,  0.75, 0.75,  0.25,  0.25, 0.25,
                                              0.25, 0.44, 0.44, 0.125, 0.0625};

std::uint8_t Mix(std::uint8_t one, std::uint8_t other, double share)
{
    return static_cast<std::uint8_t>(std::lround(one * share + other * (1 - share)));
}

} // namespace

void LayOver(book::CellStyle& style, const PartialStyle& over)
{
    LayOver(style.font, over);
    Take(style.fill, over.fill);
    Take(style.border.left, over.left);
    Take(style.border.right, over.right);
    Take(style.border.top, over.top);
    Take(style.border.bottom, over.bottom);
    Take(style.numberFormat, over.numberFormat);
}

void LayOver(book::Font& font, const PartialStyle& over)
{
    Take(font.bold, over.bold);
    Take(font.italic, over.italic);
    Take(font.strike, over.strike);
    Take(font.underline, over.underline);
    Take(font.color, over.fontColor);
}

void LayUnder(book::CellStyle& style, const PartialStyle& under)
{
    book::Font& font = style.font;
    font.bold = font.bold || under.bold.value_or(false);
    font.italic = font.italic || under.italic.value_or(false);
    font.strike = font.strike || under.strike.value_or(false);
    if (font.underline == book::Underline::None)
        Take(font.underline, under.underline);
    if (!font.color || *font.color == book::kBlack) // the theme's own colour of texts
        Take(font.color, under.fontColor);
    if (style.fill.pattern == book::FillPattern::None && !style.fill.gradient)
        Take(style.fill, under.fill);
    TakeLine(style.border.left, under.left);
    TakeLine(style.border.right, under.right);
    TakeLine(style.border.top, under.top);
    TakeLine(style.border.bottom, under.bottom);
}

std::optional<PartialStyle> TableStyleAt(const book::SheetLook& look, CellAddress cell)
{
    for (const Table& table : look.tables) {
        if (table.range.Contains(cell))
            return TableCell(table, cell).Style();
    }
    return std::nullopt;
}

std::optional<book::Color> MeanColor(const book::Fill& fill)
{
    if (fill.gradient && !fill.gradient->stops.empty()) {
        const auto& stops = fill.gradient->stops;
        return stops[stops.size() / 2].color;
    }
    if (fill.pattern == book::FillPattern::None)
        return std::nullopt;
    const double share = kCoverage.at(static_cast<std::size_t>(fill.pattern));
    const book::Color front = fill.foreground.value_or(book::kBlack);
    const book::Color back = fill.background.value_or(book::kWhite);
    return book::Color{Mix(front.red, back.red, share), Mix(front.green, back.green, share),
                       Mix(front.blue, back.blue, share)};
}

} // namespace orrery::look
