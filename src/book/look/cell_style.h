#pragma once

#include "book/look/color.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// How a cell is formatted. Colours of themes, tints and palettes are resolved by the readers; a
/// colour that is absent is the automatic one: black for texts and lines, white for what is filled.
namespace orrery::book {

enum class Underline : std::uint8_t { None, Single, Double, SingleAccounting, DoubleAccounting };
enum class TextPosition : std::uint8_t { Baseline, Superscript, Subscript };

struct Font {
    std::string name = "Calibri";
    double size = 11; ///< points
    bool bold = false;
    bool italic = false;
    bool strike = false;
    Underline underline = Underline::None;
    TextPosition position = TextPosition::Baseline;
    std::optional<Color> color;
    friend bool operator==(const Font&, const Font&) = default;
};

/// In the order of [MS-XLS] 2.5.66 (FillPattern) and of ECMA-376 18.18.55.
enum class FillPattern : std::uint8_t {
    None,
    Solid, ///< in the foreground colour
    MediumGray,
    DarkGray,
    LightGray,
    DarkHorizontal,
    DarkVertical,
    DarkDown,
    DarkUp,
    DarkGrid,
    DarkTrellis,
    LightHorizontal,
    LightVertical,
    LightDown,
    LightUp,
    LightGrid,
    LightTrellis,
    Gray125,
    Gray0625
};

struct GradientStop {
    double position = 0; ///< [0:1]
    Color color;
    friend bool operator==(const GradientStop&, const GradientStop&) = default;
};

/// ECMA-376 18.8.24. A path gradient runs from the edges of the inner rectangle outwards.
struct Gradient {
    bool isPath = false;
    double degree = 0; ///< of a linear one: 0 is left to right, 90 top to bottom
    double left = 0;   ///< the inner rectangle, in shares of the cell [0:1]
    double right = 0;
    double top = 0;
    double bottom = 0;
    std::vector<GradientStop> stops; ///< in rising order
    friend bool operator==(const Gradient&, const Gradient&) = default;
};

struct Fill {
    FillPattern pattern = FillPattern::None;
    std::optional<Color> foreground; ///< of the pattern's lines; of a solid fill the colour itself
    std::optional<Color> background;
    std::optional<Gradient> gradient; ///< then the pattern does not count
    friend bool operator==(const Fill&, const Fill&) = default;
};

/// In the order of [MS-XLS] 2.5.11 (BorderStyle).
enum class LineStyle : std::uint8_t {
    None,
    Thin,
    Medium,
    Dashed,
    Dotted,
    Thick,
    Double,
    Hair,
    MediumDashed,
    DashDot,
    MediumDashDot,
    DashDotDot,
    MediumDashDotDot,
    SlantDashDot
};

struct BorderLine {
    LineStyle style = LineStyle::None;
    std::optional<Color> color;
    friend bool operator==(const BorderLine&, const BorderLine&) = default;
};

struct Border {
    BorderLine left;
    BorderLine right;
    BorderLine top;
    BorderLine bottom;
    BorderLine diagonal;       ///< of both diagonals
    bool diagonalUp = false;   ///< from lower left to upper right
    bool diagonalDown = false; ///< from upper left to lower right
    friend bool operator==(const Border&, const Border&) = default;
};

enum class HorizontalAlignment : std::uint8_t {
    General, ///< texts left, numbers right, logical values and errors centred
    Left,
    Center,
    Right,
    Fill, ///< repeated as often as it fits
    Justify,
    CenterContinuous, ///< across the empty cells to the right that are aligned so
    Distributed
};
enum class VerticalAlignment : std::uint8_t { Top, Center, Bottom, Justify, Distributed };
enum class ReadingOrder : std::uint8_t { Context, LeftToRight, RightToLeft };

struct Alignment {
    static constexpr std::int16_t kStacked = 255;

    HorizontalAlignment horizontal = HorizontalAlignment::General;
    VerticalAlignment vertical = VerticalAlignment::Bottom;
    bool wrap = false;
    bool shrink = false;
    std::int16_t indent = 0;   ///< [0:250], each of three blanks of the Normal font
    std::int16_t rotation = 0; ///< degrees counterclockwise [-90:90], or kStacked
    ReadingOrder readingOrder = ReadingOrder::Context;
    friend bool operator==(const Alignment&, const Alignment&) = default;
};

struct CellStyle {
    Font font;
    Fill fill;
    Border border;
    Alignment alignment;
    std::string numberFormat = "General"; ///< a code as in en-US: "0.00", "[Red]-0;;@"
    friend bool operator==(const CellStyle&, const CellStyle&) = default;
};

/// What a conditional format or the part of a table style sets; what is absent stays as it is.
struct PartialStyle {
    std::optional<bool> bold;
    std::optional<bool> italic;
    std::optional<bool> strike;
    std::optional<Underline> underline;
    std::optional<Color> fontColor;
    std::optional<Fill>
        fill; ///< a pattern of None, if only colours were given, is solid: [MS-OI29500] 2.1.783
    std::optional<BorderLine> left;
    std::optional<BorderLine> right;
    std::optional<BorderLine> top;
    std::optional<BorderLine> bottom;
    std::optional<BorderLine> innerHorizontal; ///< of table styles: between rows
    std::optional<BorderLine> innerVertical;   ///< between columns
    std::optional<std::string> numberFormat;
    friend bool operator==(const PartialStyle&, const PartialStyle&) = default;
};

} // namespace orrery::book
