#include "look/layout/lay_out.h"

#include "look/layout/borders.h"
#include "look/layout/cell_items.h"
#include "look/layout/cell_text.h"
#include "look/layout/drawing_boxes.h"
#include "look/layout/neighbors.h"
#include "look/layout/sheet_axes.h"
#include "look/text/characters.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orrery::look {
namespace {

using book::CellAddress;
using book::CellRange;

constexpr CellAddress kLastCell{1'048'576, 16'384};
/// How far merged ranges and print areas, which are often whole columns, extend what is used.
constexpr std::int32_t kMostExtraRows = 1000;
constexpr std::int32_t kMostExtraColumns = 100;
/// Bytes of texts that are placed in full; behind them only the beginning of long texts is.
constexpr std::size_t kMostText = 8'000'000;
constexpr std::size_t kLongText = 256;

CellRange WithinSheet(CellRange range)
{
    const auto within = [](CellAddress& at) {
        at.row = std::clamp(at.row, 1, kLastCell.row);
        at.column = std::clamp(at.column, 1, kLastCell.column);
    };
    within(range.first);
    within(range.last);
    range.last.row = std::max(range.first.row, range.last.row);
    range.last.column = std::max(range.first.column, range.last.column);
    return range;
}

bool IsShown(const CellDisplay& display)
{
    return !display.text.empty() || display.bar || display.icon || !display.isComputed ||
           IsVisible(*display.style);
}

/// What is known of one layout while it is made.
class Maker {
public:
    Maker(const book::SheetLook& sheet, const book::WorkbookLook& workbook, CellSource& source,
          const TextMeasure& measure, const LayoutOptions& options)
        : sheet_(sheet), options_(options), measure_(measure),
          range_(WithinSheet(options.range.value_or(UsedRange(sheet)))),
          found_(CollectItems(sheet, range_, options.mostCells, source)),
          columns_(ColumnAxis(sheet, workbook.normalFont, measure)),
          rows_(RowAxis(sheet, workbook.normalFont, measure, columns_, found_.items)),
          indentWidth_(3 * measure.Width(" ", workbook.normalFont))
    {
    }

    Layout Make(CellSource& source)
    {
        if (!options_.range)
            ReachTexts(source);
        layout_.range = range_;
        layout_.leftOut = sheet_.leftOut;
        layout_.showsGridLines = sheet_.view.showsGridLines;
        layout_.gridColor = sheet_.view.gridColor.value_or(layout_.gridColor);
        SetEdges();
        SetCells();
        SetDrawings();
        if (found_.isCut)
            layout_.leftOut.push_back({"cells", "", "the sheet shows too many"});
        return std::move(layout_);
    }

private:
    bool IsMirrored() const { return sheet_.view.isRightToLeft; }

    /// Widens the range by the empty columns that texts flow into.
    void ReachTexts(CellSource& source)
    {
        const std::int32_t last = LastReachedColumn(sheet_, range_, found_.items, columns_,
                                                    {0, 0, indentWidth_, &measure_});
        if (last <= range_.last.column)
            return;
        const CellRange beyond{{range_.first.row, range_.last.column + 1}, {range_.last.row, last}};
        const std::size_t used = std::min(found_.items.size(), options_.mostCells);
        CellItems more = CollectItems(sheet_, beyond, options_.mostCells - used, source);
        range_.last.column = last;
        found_.isCut = found_.isCut || more.isCut;
        for (CellItem& item : more.items) {
            if (beyond.Contains(item.range.first))
                found_.items.push_back(std::move(item));
        }
        std::stable_sort(found_.items.begin(), found_.items.end(),
                         [](const CellItem& left, const CellItem& right) {
                             return left.range.first < right.range.first;
                         });
    }

    /// Merged cells that show nothing hide the grid.
    bool IsSeen(const CellItem& item) const
    {
        return IsShown(item.display) || (sheet_.view.showsGridLines && !item.range.IsOneCell());
    }

    void SetEdges()
    {
        const double left = columns_.Position(range_.first.column);
        const double top = rows_.Position(range_.first.row);
        layout_.width = columns_.Position(range_.last.column + 1) - left;
        layout_.height = rows_.Position(range_.last.row + 1) - top;
        for (std::int32_t i = range_.first.column; i <= range_.last.column + 1; ++i) {
            const double x = columns_.Position(i) - left;
            layout_.columns.push_back(IsMirrored() ? layout_.width - x : x);
        }
        double y = 0;
        layout_.rows.reserve(static_cast<std::size_t>(range_.last.row - range_.first.row) + 2);
        for (std::int32_t i = range_.first.row; i <= range_.last.row; ++i) {
            layout_.rows.push_back(y);
            y += rows_.Size(i);
        }
        layout_.rows.push_back(layout_.height);
    }

    /// Also of cells outside of the range.
    Box BoxOf(const CellRange& cells) const
    {
        const Box box{columns_.Position(cells.first.column), rows_.Position(cells.first.row),
                      columns_.Length(cells.first.column, cells.last.column),
                      rows_.Length(cells.first.row, cells.last.row)};
        return OnPage(box);
    }

    /// From the sheet's first cell to the range's.
    Box OnPage(Box box) const
    {
        box.x -= columns_.Position(range_.first.column);
        box.y -= rows_.Position(range_.first.row);
        if (IsMirrored())
            box.x = layout_.width - box.Right();
        return box;
    }

    void SetCells()
    {
        const auto free = FindFreeColumns(sheet_, range_, found_.items);
        layout_.cells.reserve(found_.items.size()); // boxes are large: growing would move them
        for (std::size_t i = 0; i < found_.items.size(); ++i) {
            CellItem& item = found_.items[i];
            if (!IsSeen(item))
                continue;
            CellBox cell;
            cell.range = item.range;
            cell.box = BoxOf(item.range);
            if (cell.box.width <= 0 || cell.box.height <= 0)
                continue;
            const std::int32_t lastCentered = LastCenteredColumn(sheet_, item, free[i]);
            cell.display = std::move(item.display);
            Place(cell, free[i], lastCentered);
            layout_.cells.push_back(std::move(cell));
        }
        ResolveBorders(sheet_, layout_.cells);
    }

    void Place(CellBox& cell, const FreeColumns& free, std::int32_t lastCentered)
    {
        LimitText(cell.display);
        const std::int32_t row = cell.range.first.row;
        const Box flow = BoxOf({{row, free.first}, {row, free.last}});
        const TextRoom room{flow.x, flow.Right(), indentWidth_, &measure_};
        const Box own = cell.box;
        if (lastCentered > cell.range.last.column)
            cell.box = BoxOf({cell.range.first, {cell.range.last.row, lastCentered}});
        PlaceCellText(cell, room);
        cell.box = own;
    }

    void LimitText(CellDisplay& display)
    {
        if (display.text.size() > kLongText && display.text.size() > kMostText - usedText_) {
            std::size_t end = 0;
            while (end < kLongText)
                end = ClusterEnd(display.text, end);
            display.text.resize(end);
            display.fillAt.reset();
        }
        else {
            usedText_ += std::min(display.text.size(), kMostText - usedText_);
        }
    }

    void SetDrawings()
    {
        const std::size_t count = std::min(sheet_.drawings.size(), options_.mostDrawings);
        for (std::size_t i = 0; i < count; ++i) {
            const book::Drawing& drawing = sheet_.drawings[i];
            layout_.drawings.push_back({&drawing, OnPage(UnturnedBox(drawing, columns_, rows_))});
        }
        if (count < sheet_.drawings.size())
            layout_.leftOut.push_back({"drawings", "", "the sheet has too many"});
    }

    const book::SheetLook& sheet_;
    const LayoutOptions& options_;
    const TextMeasure& measure_;
    CellRange range_;
    CellItems found_;
    Axis columns_;
    Axis rows_;
    double indentWidth_;
    std::size_t usedText_ = 0;
    Layout layout_;
};

void Extend(CellRange& range, CellAddress last)
{
    range.last.row = std::max(range.last.row, std::min(last.row, kLastCell.row));
    range.last.column = std::max(range.last.column, std::min(last.column, kLastCell.column));
}

/// The cell at which a drawing ends; one without that is taken to have cells of an ordinary size.
CellAddress LastCellOf(const book::Anchor& anchor)
{
    if (anchor.to)
        return anchor.to->cell;
    constexpr double kWidth = 64 * book::kEmuPerPixel;
    constexpr double kHeight = 20 * book::kEmuPerPixel;
    const auto count = [](std::int64_t emu, double size) {
        return static_cast<std::int32_t>(
            std::clamp(static_cast<double>(emu) / size, 0.0, 10'000.0));
    };
    return {std::clamp(anchor.from.cell.row, 1, kLastCell.row) + count(anchor.height, kHeight),
            std::clamp(anchor.from.cell.column, 1, kLastCell.column) + count(anchor.width, kWidth)};
}

} // namespace

CellRange UsedRange(const book::SheetLook& sheet)
{
    CellRange used{{1, 1}, {1, 1}};
    std::vector<bool> isSeen;
    isSeen.reserve(sheet.styles.size());
    for (const book::CellStyle& style : sheet.styles)
        isSeen.push_back(IsVisible(style));
    for (const book::Cell& cell : sheet.cells) {
        if (cell.formula >= 0 || cell.content.index() != 0 ||
            (cell.style < isSeen.size() && isSeen[cell.style]))
            Extend(used, cell.address);
    }
    const CellAddress furthest{used.last.row + kMostExtraRows,
                               used.last.column + kMostExtraColumns};
    const auto extendWithin = [&](const CellRange& range) {
        if (range.first.row <= furthest.row && range.first.column <= furthest.column)
            Extend(used, {std::min(range.last.row, furthest.row),
                          std::min(range.last.column, furthest.column)});
    };
    for (const CellRange& area : sheet.page.printAreas) {
        if (area.last.row < kMostExtraRows * 60 && area.last.column < 256)
            extendWithin(area);
    }
    for (const CellRange& merge : sheet.merges) {
        if (used.Contains(merge.first) && merge.last.row < kMostExtraRows * 60 &&
            merge.last.column < 256)
            extendWithin(merge);
    }
    for (const book::Table& table : sheet.tables)
        extendWithin(table.range);
    for (const book::Drawing& drawing : sheet.drawings)
        Extend(used, LastCellOf(drawing.anchor));
    return used;
}

Layout LayOut(const book::SheetLook& sheet, const book::WorkbookLook& workbook, CellSource& source,
              const TextMeasure& measure, const LayoutOptions& options)
{
    return Maker(sheet, workbook, source, measure, options).Make(source);
}

} // namespace orrery::look
