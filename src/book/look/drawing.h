#pragma once

#include "book/look/chart.h"
#include "book/look/page_setup.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::book {

inline constexpr double kEmuPerPixel = 9525; ///< English metric units, at 96 dpi

/// A place on a sheet: in a cell, moved by a share of the cell's size and by a length.
struct AnchorPoint {
    CellAddress cell{1, 1};
    double shareX = 0; ///< [0:1] of the column's width
    double shareY = 0; ///< [0:1] of the row's height
    std::int64_t emuX = 0;
    std::int64_t emuY = 0;
};

struct Anchor {
    AnchorPoint from;
    std::optional<AnchorPoint> to; ///< absent: the size is `width` by `height`
    std::int64_t width = 0;        ///< EMU
    std::int64_t height = 0;
};

struct ParagraphRun {
    std::string text;
    Font font;
};
struct Paragraph {
    std::vector<ParagraphRun> runs;
    HorizontalAlignment alignment = HorizontalAlignment::Left;
};
/// The text of a shape. Insets are points.
struct TextBody {
    std::vector<Paragraph> paragraphs;
    VerticalAlignment vertical = VerticalAlignment::Top;
    bool wraps = true;
    std::int16_t rotation = 0; ///< degrees clockwise: 0, 90, 270
    double left = 7.2;
    double top = 3.6;
    double right = 7.2;
    double bottom = 3.6;
};

/// A point in shares of a shape's box, which it may leave.
struct SharePoint {
    double x = 0;
    double y = 0;
    friend bool operator==(const SharePoint&, const SharePoint&) = default;
};
struct FreeformStep {
    enum class Kind : std::uint8_t { Move, Line, Curve, Close } kind = Kind::Move;
    SharePoint point;    ///< where it ends
    SharePoint control1; ///< of a cubic Bézier curve
    SharePoint control2;
    friend bool operator==(const FreeformStep&, const FreeformStep&) = default;
};
/// A part of a freeform's outline. Filled is what its lines are around an odd number of times.
struct FreeformPart {
    std::vector<FreeformStep> steps;
    bool isFilled = true;
    bool isStroked = true;
    double shade = 0; ///< of its fill: towards black [-1:0] or white [0:1]
};
/// The outline of a shape that no other one has.
struct Freeform {
    std::vector<FreeformPart> parts; ///< in the order of painting
    ShareBox text;                   ///< where the shape's text stands, before the insets
};

enum class DrawingKind : std::uint8_t { Picture, Shape, Line, Group, Chart, Control, Placeholder };

/// What lies above the cells. Lists are in the order of painting.
struct Drawing {
    DrawingKind kind = DrawingKind::Placeholder;
    std::string name;
    Anchor anchor;       ///< of a drawing on the sheet
    ShareBox place;      ///< of one in a group: in the group's box
    double rotation = 0; ///< degrees clockwise around its middle
    /// The anchor holds the drawing after a quarter turn: its box, unturned, has the same middle
    /// with width and height exchanged.
    bool isAnchorTurned = false;
    bool flipsHorizontally = false;
    bool flipsVertically = false;

    std::string geometry = "rect"; ///< of shapes: ECMA-376 20.1.10.56 (ST_ShapeType)
    std::vector<double>
        adjustments; ///< of the geometry, in 1/100,000, in its order; NaN: as it has it itself
    std::shared_ptr<const Freeform> freeform; ///< then the geometry does not count
    std::optional<Fill> fill;                 ///< absent: none
    double fillOpacity = 1;                   ///< [0:1]
    Outline outline;
    bool hasArrowAtStart = false;
    bool hasArrowAtEnd = false;
    std::optional<TextBody> text;

    std::shared_ptr<const std::string> picture; ///< the bytes of its file
    std::string pictureType; ///< "png", "jpeg", "gif", "bmp", "emf", "wmf", "svg", "tiff"
    ShareBox crop;           ///< what is shown of it

    std::shared_ptr<const Chart> chart;
    std::string description;       ///< of placeholders: what it would be ("slicer", "chart sheet")
    std::vector<Drawing> children; ///< of groups
};

} // namespace orrery::book
