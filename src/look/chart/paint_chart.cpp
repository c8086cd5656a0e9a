#include "look/chart/paint_chart.h"

#include "look/chart/legend.h"
#include "look/chart/plot_frame.h"

#include <algorithm>
#include <string>

namespace orrery::look {
namespace {

using book::ChartKind;

constexpr double kChartMargin = 8;
constexpr double kSmallest = 8; // pixels: what is smaller is only a frame
constexpr std::size_t kMaxTitleLines = 6;

bool IsRoundKind(ChartKind kind)
{
    return kind == ChartKind::Pie || kind == ChartKind::Doughnut;
}

bool HasAxes(ChartKind kind)
{
    return kind == ChartKind::Bar || kind == ChartKind::Column || kind == ChartKind::Line ||
           kind == ChartKind::Area || kind == ChartKind::Scatter || kind == ChartKind::Stock;
}

std::string KindText(const book::Chart& chart)
{
    switch (chart.groups.empty() ? ChartKind::Other : chart.groups.front().kind) {
    case ChartKind::Bubble:
        return "Bubble chart";
    case ChartKind::Radar:
        return "Radar chart";
    case ChartKind::Surface:
        return "Surface chart";
    default:
        return chart.kindName.empty() ? "Chart" : "Chart: " + chart.kindName;
    }
}

/// Paints one chart from the outside inwards.
class ChartPainter {
public:
    ChartPainter(const book::Chart& chart, const Box& box, Canvas& canvas,
                 const TextMeasure& measure, const ChartValues& values)
        : chart_(chart), box_(box),
          text_(canvas, measure), painter_{canvas, text_, values, chart.font},
          plotted_(PlotValues(chart, values))
    {
    }

    void Paint()
    {
        painter_.canvas.Clip(box_);
        if (chart_.fill)
            painter_.canvas.FillBox(box_, SolidBrush(*chart_.fill));
        if (chart_.outline.isVisible)
            painter_.canvas.DrawPath(PathOfBox(box_), std::nullopt,
                                     painter_.PenOf(chart_.outline, book::kBlack));
        if (box_.width >= kSmallest && box_.height >= kSmallest)
            PaintContent();
        painter_.canvas.Restore();
    }

private:
    void PaintContent()
    {
        Box left{box_.x + kChartMargin, box_.y + kChartMargin, box_.width - 2 * kChartMargin,
                 box_.height - 2 * kChartMargin};
        PaintTitle(left);
        const bool isRound = Has(IsRoundKind);
        if (!isRound && !Has(HasAxes)) {
            text_.DrawCentered(KindText(chart_), painter_.font, left.Middle(), TextSide::Middle);
            return;
        }
        Legend legend(plotted_, painter_);
        legend.TakeRoom(left);
        if (left.width < 1 || left.height < 1)
            return;
        if (isRound)
            PaintRound(left);
        else
            PaintWithAxes(left);
        legend.Paint();
    }

    bool Has(bool (*isOfKind)(ChartKind)) const
    {
        return std::any_of(chart_.groups.begin(), chart_.groups.end(),
                           [&](const book::ChartGroup& group) { return isOfKind(group.kind); });
    }

    void PaintTitle(Box& left) const
    {
        if (!chart_.title)
            return;
        const book::Font font = chart_.title->font.value_or(chart_.font);
        const double height = text_.LineHeight(font);
        double y = left.y;
        for (const std::string& line : text_.Wrap(TitleText(*chart_.title, painter_.values), font,
                                                  left.width, kMaxTitleLines)) {
            text_.Draw(line, font, {left.Middle().x, y}, TextSide::Middle);
            y += height;
        }
        const double used = y > left.y ? y - left.y + kChartMargin : 0;
        left.y += used;
        left.height -= used;
    }

    void PaintRound(const Box& left) const
    {
        Box box = left;
        if (const auto& place = chart_.plotPlace)
            box = {box_.x + place->left * box_.width, box_.y + place->top * box_.height,
                   (place->right - place->left) * box_.width,
                   (place->bottom - place->top) * box_.height};
        for (const PlottedGroup& group : plotted_.groups) {
            if (IsRoundKind(group.group->kind))
                painter_.PaintPies(group, box);
        }
    }

    void PaintWithAxes(const Box& left) const
    {
        const PlotFrame frame(plotted_, painter_, left, box_);
        frame.PaintBelow();
        // Areas lie behind columns, and those behind lines.
        PaintGroups(frame.Place(), ChartKind::Area, &SeriesPainter::PaintAreas);
        PaintGroups(frame.Place(), ChartKind::Column, &SeriesPainter::PaintColumns);
        PaintGroups(frame.Place(), ChartKind::Bar, &SeriesPainter::PaintColumns);
        PaintGroups(frame.Place(), ChartKind::Line, &SeriesPainter::PaintLines);
        PaintGroups(frame.Place(), ChartKind::Stock, &SeriesPainter::PaintStock);
        PaintGroups(frame.Place(), ChartKind::Scatter, &SeriesPainter::PaintScatter);
        frame.PaintAbove();
    }

    void PaintGroups(const Plot& plot, ChartKind kind,
                     void (SeriesPainter::*paint)(const PlottedGroup&, const Plot&) const) const
    {
        for (const PlottedGroup& group : plotted_.groups) {
            if (group.group->kind == kind)
                (painter_.*paint)(group, plot);
        }
    }

    const book::Chart& chart_;
    Box box_;
    TextPainter text_;
    SeriesPainter painter_;
    PlottedChart plotted_;
};

} // namespace

void PaintChart(const book::Chart& chart, const Box& box, Canvas& canvas,
                const TextMeasure& measure, const ChartValues& values)
{
    ChartPainter(chart, box, canvas, measure, values).Paint();
}

} // namespace orrery::look
