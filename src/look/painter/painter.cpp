#include "look/painter/painter.h"

#include "look/painter/bars.h"
#include "look/painter/borders.h"
#include "look/painter/cell_fills.h"
#include "look/painter/cell_texts.h"
#include "look/painter/drawings.h"
#include "look/painter/icons.h"
#include "look/painter/page.h"
#include "look/painter/pixels.h"
#include "look/painter/sparklines.h"

namespace orrery::look {

namespace {

constexpr book::Color kMark{0xA6, 0xA6, 0xA6};
constexpr double kMarkSize = 5;

void PaintMark(const Box& cell, Canvas& canvas)
{
    using enum PathStep::Kind;
    const Box box = OnPixels(cell);
    canvas.DrawPath({{Move, {box.Right() - 1, box.y}, {}, {}},
                     {Line, {box.Right() - 1, box.y + kMarkSize}, {}, {}},
                     {Line, {box.Right() - 1 - kMarkSize, box.y}, {}, {}},
                     {Close, {}, {}, {}}},
                    SolidBrush(kMark), {});
}

/// Paints one part of a sheet, in sheet coordinates.
class SheetPainter {
public:
    SheetPainter(const Layout& layout, Canvas& canvas, const TextMeasure& measure,
                 const PaintOptions& options, const Box& visible)
        : layout_(layout), canvas_(canvas), measure_(measure), options_(options), visible_(visible)
    {
    }

    void Paint(bool hasGrid)
    {
        PaintGround(hasGrid);
        PaintBorders(layout_, visible_, canvas_);
        PaintContents();
    }

    /// Nothing leaves the page's area but the halves of lines on its edges.
    void PaintPart(bool hasGrid)
    {
        if (options_.linesLie == LinesLie::BeforeEdges) {
            canvas_.Clip(visible_);
            Paint(hasGrid);
            canvas_.Restore();
            return;
        }
        constexpr double reach = 2; // more than half of the widest line
        canvas_.Clip(visible_);
        PaintGround(hasGrid);
        canvas_.Restore();
        canvas_.Clip({visible_.x - reach, visible_.y - reach, visible_.width + 2 * reach,
                      visible_.height + 2 * reach});
        PaintBorders(layout_, visible_, canvas_, LinesLie::OnEdges);
        canvas_.Restore();
        canvas_.Clip(visible_);
        PaintContents();
        canvas_.Restore();
    }

private:
    /// What lies below the lines.
    void PaintGround(bool hasGrid)
    {
        if (hasGrid) {
            canvas_.BeginGroup("grid", {});
            PaintGridLines(layout_, visible_, canvas_);
            canvas_.EndGroup();
        }
        PaintFills(layout_, visible_, hasGrid, canvas_);
        PaintBars();
        PaintSparklines();
        PaintIcons();
    }

    void PaintContents()
    {
        PaintTexts();
        PaintDrawings(layout_, visible_, canvas_, measure_, options_);
    }

    void PaintBars()
    {
        for (const auto& cell : layout_.cells) {
            if (cell.display.bar && Overlaps(cell.box, visible_))
                PaintBar(*cell.display.bar, cell.box, canvas_);
        }
    }

    void PaintIcons()
    {
        for (const auto& cell : layout_.cells) {
            if (cell.display.icon && cell.iconBox && Overlaps(cell.box, visible_))
                PaintIcon(*cell.display.icon, *cell.iconBox, canvas_);
        }
    }

    void PaintSparklines()
    {
        if (!options_.sparklines || !options_.sparklineValues)
            return;
        for (const auto& group : *options_.sparklines) {
            for (const auto& sparkline : group.sparklines) {
                if (!layout_.range.Contains(sparkline.cell))
                    continue;
                const Box box = layout_.BoxOf({sparkline.cell, sparkline.cell});
                if (Overlaps(box, visible_))
                    PaintSparkline(group, options_.sparklineValues(sparkline.formula), box,
                                   canvas_);
            }
        }
    }

    void PaintTexts()
    {
        for (const auto& cell : layout_.cells) {
            if (!Overlaps(cell.clip, visible_) && !Overlaps(cell.box, visible_))
                continue;
            if (!cell.lines.empty()) {
                canvas_.BeginGroup(book::FormatCellAddress(cell.range.first), "");
                PaintCellText(cell, measure_, canvas_);
                canvas_.EndGroup();
            }
            if (options_.marksNotComputed && !cell.display.isComputed)
                PaintMark(cell.box, canvas_);
        }
    }

    const Layout& layout_;
    Canvas& canvas_;
    const TextMeasure& measure_;
    const PaintOptions& options_;
    const Box visible_;
};

} // namespace

void PaintSheet(const Layout& layout, Canvas& canvas, const TextMeasure& measure,
                const PaintOptions& options)
{
    const Box whole{0, 0, layout.width, layout.height};
    const Box visible = options.visible ? Common(*options.visible, whole) : whole;
    canvas.FillBox(visible, SolidBrush(book::kWhite));
    SheetPainter(layout, canvas, measure, options, visible).Paint(layout.showsGridLines);
}

void PaintPage(const Layout& layout, const PageBox& page, Canvas& canvas,
               const TextMeasure& measure, const PaintOptions& options)
{
    canvas.FillBox({0, 0, page.paperWidth, page.paperHeight}, SolidBrush(book::kWhite));
    for (const DrawingBox& picture : page.headerPictures)
        PaintDrawing(picture, canvas, measure, options);
    for (const auto& part : PartsOf(page)) {
        canvas.Place(
            {part.place.x - part.area.x * page.scale, part.place.y - part.area.y * page.scale},
            page.scale);
        SheetPainter(layout, canvas, measure, options, part.area)
            .PaintPart(options.printsGridLines);
        canvas.Restore();
    }
    for (const auto& line : page.headerAndFooter)
        PaintLine(line, canvas);
}

} // namespace orrery::look
