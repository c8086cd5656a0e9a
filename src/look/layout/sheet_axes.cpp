#include "look/layout/sheet_axes.h"

#include "look/layout/metrics.h"
#include "look/layout/text_needs.h"

#include <algorithm>

namespace orrery::look {
namespace {

/// How much higher than the default a text must be: the fonts that a machine has instead of the
/// file's are a little higher or lower, and that must not move rows.
constexpr double kClearly = 1.2;
/// Bytes of texts that are broken into lines for heights alone. No sheet that people read has more.
constexpr std::size_t kMostBrokenText = 4'000'000;

/// The heights of rows that have none in the file, by what their cells show.
class FittedRows {
public:
    FittedRows(const book::SheetLook& sheet, const book::Font& normal, const TextMeasure& measure,
               const Axis& columns, double defaultHeight)
        : sheet_(sheet), columns_(columns), defaultHeight_(defaultHeight),
          normalSize_(normal.size), room_{0, 0, 3 * measure.Width(" ", normal), &measure}
    {
    }

    std::vector<AxisSpan> Fit(const std::vector<CellItem>& items)
    {
        std::vector<AxisSpan> fitted;
        auto row = sheet_.rows.begin();
        for (const CellItem& item : items) {
            const std::int32_t index = item.range.first.row;
            while (row != sheet_.rows.end() && row->row < index)
                ++row;
            const bool isListed = row != sheet_.rows.end() && row->row == index;
            if (!item.range.IsOneCell() ||
                (isListed ? row->height || row->isHidden : sheet_.areRowsHidden))
                continue;
            const double height = Height(item);
            if (height < defaultHeight_ * kClearly)
                continue;
            if (!fitted.empty() && fitted.back().first == index)
                fitted.back().size = std::max(fitted.back().size, height);
            else
                fitted.push_back({index, index, height});
        }
        return fitted;
    }

private:
    double Height(const CellItem& item)
    {
        const CellDisplay& display = item.display;
        if (display.text.empty() || !display.showsValue)
            return 0;
        const bool mayBeHigher = IsWrapped(display) || display.style->alignment.rotation != 0 ||
                                 display.style->font.size > normalSize_ || !display.runs.empty();
        if (!mayBeHigher || display.text.size() > kMostBrokenText - used_)
            return 0;
        used_ += display.text.size();
        constexpr double kHighest = 409.5; // points
        return std::min(FittingHeight(display, columns_.Size(item.range.first.column), room_),
                        RowHeight(kHighest, false));
    }

    const book::SheetLook& sheet_;
    const Axis& columns_;
    double defaultHeight_;
    double normalSize_;
    TextRoom room_;
    std::size_t used_ = 0;
};

/// The rows of the file, and the fitted ones between them.
std::vector<AxisSpan> RowSpans(const book::SheetLook& sheet, double defaultHeight,
                               const std::vector<AxisSpan>& fitted)
{
    std::vector<AxisSpan> spans;
    spans.reserve(sheet.rows.size());
    auto next = fitted.begin();
    for (const book::RowLook& row : sheet.rows) {
        for (; next != fitted.end() && next->first < row.row; ++next)
            spans.push_back(*next);
        double height = defaultHeight;
        if (row.isHidden)
            height = 0;
        else if (row.height)
            height = RowHeight(*row.height, sheet.areRowsWholePixels);
        else if (next != fitted.end() && next->first == row.row)
            height = next->size;
        spans.push_back({row.row, row.row, height});
        if (next != fitted.end() && next->first == row.row)
            ++next;
    }
    spans.insert(spans.end(), next, fitted.end());
    return spans;
}

} // namespace

Axis ColumnAxis(const book::SheetLook& sheet, const book::Font& normal, const TextMeasure& measure)
{
    const double digit = DigitWidth(normal, measure);
    const double defaultWidth = DefaultColumnWidth(sheet, digit);
    std::vector<AxisSpan> spans;
    for (const book::ColumnLook& column : sheet.columns) {
        const double width = column.width ? ColumnWidth(*column.width, digit) : defaultWidth;
        spans.push_back({column.first, column.last, column.isHidden ? 0 : width});
    }
    return {defaultWidth, spans};
}

Axis RowAxis(const book::SheetLook& sheet, const book::Font& normal, const TextMeasure& measure,
             const Axis& columns, const std::vector<CellItem>& items)
{
    const double height = DefaultRowHeight(sheet, normal, measure);
    FittedRows rows(sheet, normal, measure, columns, height);
    return {sheet.areRowsHidden ? 0 : height, RowSpans(sheet, height, rows.Fit(items))};
}

} // namespace orrery::look
