#pragma once

#include "book/look/cell_style.h"
#include "look/values/geometry.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orrery::look {

struct Pen {
    book::Color color;
    double width = 1;           ///< pixels
    std::vector<double> dashes; ///< lengths on and off in turn; empty: a whole line
    double opacity = 1;
};

/// What fills: a colour, or a gradient over the filled box, or a pattern of 8 by 8 pixels. A
/// pattern of None fills nothing.
struct Brush {
    book::Fill fill; ///< a solid pattern, another one, or a gradient
    double opacity = 1;
    bool isEvenOdd = false; ///< fills only what a path winds around an odd number of times
};

Brush SolidBrush(book::Color color, double opacity = 1);

/// A line of curves: moves, lines and Bézier curves. Filled is what it winds around (nonzero),
/// unless the brush says otherwise.
struct PathStep {
    enum class Kind { Move, Line, Curve, Close } kind = Kind::Move;
    Point point;    ///< where it ends
    Point control1; ///< of a curve
    Point control2;
};
using Path = std::vector<PathStep>;

Path PathOfBox(const Box& box);

struct TextStyle {
    book::Font font;
    book::Color color;
    bool isRightToLeft = false;
};

struct PictureSource {
    std::string_view bytes;
    std::string type;      ///< as `book::Drawing::pictureType`
    Box shown{0, 0, 1, 1}; ///< the part of it, in shares
};

/// What a page is painted on. Everything is in pixels at 96 dpi, in the coordinates of the page.
class Canvas {
public:
    virtual ~Canvas() = default;
    virtual void FillBox(const Box& box, const Brush& brush) = 0;
    virtual void DrawLine(Point from, Point to, const Pen& pen) = 0;
    virtual void DrawPath(const Path& path, const std::optional<Brush>& fill,
                          const std::optional<Pen>& pen) = 0;
    /// One run of text, left end at `at` on the baseline; `width` is how wide it was measured.
    /// Of the font, name, size, weight and slant count: who draws, draws underlines as lines and
    /// gives raised texts their place and size.
    virtual void DrawText(Point at, std::string_view text, const TextStyle& style,
                          double width) = 0;
    /// False if it cannot draw pictures of this type; then nothing was drawn.
    virtual bool DrawPicture(const Box& box, const PictureSource& picture) = 0;
    /// Limits what follows to a box, until `Restore`.
    virtual void Clip(const Box& box) = 0;
    /// Turns what follows around a point, clockwise by degrees, until `Restore`.
    virtual void Rotate(Point around, double degrees) = 0;
    /// Mirrors what follows at the box's middle, until `Restore`.
    virtual void Flip(const Box& box, bool horizontally, bool vertically) = 0;
    /// Scales what follows, and places its origin at a point, until `Restore`.
    virtual void Place(Point origin, double scale) = 0;
    /// Takes back the last of the four above that was not taken back.
    virtual void Restore() = 0;
    /// Begins something with a name ("B6"); `title` is what a reader is told of it, and may be
    /// empty.
    virtual void BeginGroup(std::string_view id, std::string_view title) = 0;
    virtual void EndGroup() = 0;
};

} // namespace orrery::look
