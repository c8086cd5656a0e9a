#include "look/painter/cell_texts.h"

#include "look/painter/pixels.h"
#include "look/text/characters.h"
#include "look/text/font_tables.h"

#include <algorithm>
#include <cmath>

namespace orrery::look {

namespace {

// Shares of the font's size.
constexpr double kLineThickness = 0.065;
constexpr double kUnderlinePlace = 0.13;
constexpr double kAccountingPlace = 0.25;
constexpr double kStrikePlace = 0.27;
constexpr double kSuperscriptRise = 0.35;
constexpr double kSubscriptFall = 0.14;
/// The gap at both ends of a cell that accounting underlines leave, in pixels.
constexpr double kAccountingGap = 2;

/// A piece as it is drawn: raised pieces are smaller and off the baseline.
struct PlacedPiece {
    TextStyle style;
    Point at;
    double size = 0; ///< of the whole font, in pixels
};

PlacedPiece PlacePiece(const TextPiece& piece, const TextLine& line,
                       const std::optional<book::Color>& color)
{
    PlacedPiece placed;
    placed.style.font = piece.font;
    placed.style.color = piece.color.value_or(piece.font.color.value_or(book::kBlack));
    if (color)
        placed.style.color = *color;
    placed.style.isRightToLeft = HasRightToLeft(piece.text);
    placed.size = piece.font.size * kPixelsPerPoint;
    placed.at = {line.x + piece.x, line.baseline};
    if (piece.font.position != book::TextPosition::Baseline) {
        placed.style.font.size *= kScriptSize;
        placed.at.y += piece.font.position == book::TextPosition::Superscript
                           ? -kSuperscriptRise * placed.size
                           : kSubscriptFall * placed.size;
    }
    return placed;
}

void PaintRule(double x, double width, double middle, const Pen& pen, Canvas& canvas)
{
    // Thin lines lie on whole pixels, so that they look the same below every text.
    const double y = pen.width == 1 ? std::floor(middle) + 0.5 : middle;
    canvas.DrawLine({x, y}, {x + width, y}, pen);
}

void PaintUnderline(const TextPiece& piece, const PlacedPiece& placed, double baseline,
                    const std::optional<Box>& across, Canvas& canvas)
{
    using book::Underline;
    const auto kind = piece.font.underline;
    const bool isAccounting =
        kind == Underline::SingleAccounting || kind == Underline::DoubleAccounting;
    const bool isDouble = kind == Underline::Double || kind == Underline::DoubleAccounting;
    const Pen pen{placed.style.color,
                  std::max(1.0, std::round(kLineThickness * placed.size * (isDouble ? 0.7 : 1))),
                  {},
                  1};
    double x = placed.at.x;
    double width = piece.width;
    if (isAccounting && across) {
        x = across->x + kAccountingGap;
        width = std::max(0.0, across->width - 2 * kAccountingGap);
    }
    const double y = baseline + (isAccounting ? kAccountingPlace : kUnderlinePlace) * placed.size;
    PaintRule(x, width, y, pen, canvas);
    if (isDouble)
        PaintRule(x, width, y + 2 * pen.width, pen, canvas);
}

void PaintPiece(const TextPiece& piece, const TextLine& line,
                const std::optional<book::Color>& color, const std::optional<Box>& across,
                Canvas& canvas)
{
    const auto placed = PlacePiece(piece, line, color);
    canvas.DrawText(placed.at, piece.text, placed.style, piece.width);
    if (piece.font.underline != book::Underline::None)
        PaintUnderline(piece, placed, line.baseline, across, canvas);
    if (piece.font.strike) {
        const double size = placed.style.font.size * kPixelsPerPoint;
        PaintRule(placed.at.x, piece.width, placed.at.y - kStrikePlace * size,
                  Pen{placed.style.color, std::max(1.0, std::round(kLineThickness * size)), {}, 1},
                  canvas);
    }
}

/// Whether lines that are not turned leave their clip, so that something is cut.
bool LeavesClip(const CellBox& cell, const TextMeasure& measure)
{
    for (const auto& line : cell.lines) {
        if (line.x < cell.clip.x - 0.5 || line.x + line.width > cell.clip.Right() + 0.5)
            return true;
        for (const auto& piece : line.pieces) {
            const auto metrics = measure.Metrics(piece.font);
            if (line.baseline - metrics.ascent < cell.clip.y - 0.5 ||
                line.baseline + metrics.descent > cell.clip.Bottom() + 0.5)
                return true;
        }
    }
    return false;
}

} // namespace

void PaintLine(const TextLine& line, Canvas& canvas, const std::optional<book::Color>& color,
               const std::optional<Box>& across)
{
    for (const auto& piece : line.pieces)
        PaintPiece(piece, line, color, across, canvas);
}

void PaintCellText(const CellBox& cell, const TextMeasure& measure, Canvas& canvas)
{
    const bool isTurned = cell.rotation != 0;
    const bool isCut = isTurned || LeavesClip(cell, measure);
    if (isCut)
        canvas.Clip(cell.clip);
    if (isTurned)
        canvas.Rotate(cell.pivot, -cell.rotation);
    const auto across = isTurned ? std::optional<Box>() : cell.box;
    for (const auto& line : cell.lines)
        PaintLine(line, canvas, cell.display.color, across);
    if (isTurned)
        canvas.Restore();
    if (isCut)
        canvas.Restore();
}

} // namespace orrery::look
