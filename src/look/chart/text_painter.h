#pragma once

#include "look/canvas/canvas.h"
#include "look/text/text_measure.h"

#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

enum class TextSide { Left, Middle, Right };

/// Paints single lines at places that are given by their edges.
class TextPainter {
public:
    TextPainter(Canvas& canvas, const TextMeasure& measure) : canvas_(canvas), measure_(measure) {}

    double Width(std::string_view text, const book::Font& font) const
    {
        return measure_.Width(text, font);
    }
    double LineHeight(const book::Font& font) const { return measure_.Metrics(font).height; }
    /// The line's left end, middle or right end is at x, its upper edge at y.
    void Draw(std::string_view text, const book::Font& font, Point at, TextSide side) const;
    /// The same, with the middle of its height at y.
    void DrawCentered(std::string_view text, const book::Font& font, Point at, TextSide side) const;
    /// Upwards, with the line's middle at the point.
    void DrawUpwards(std::string_view text, const book::Font& font, Point middle) const;
    /// The lines of a text, broken at its line ends and between words where they are too wide; at
    /// most `maxLines`.
    std::vector<std::string> Wrap(std::string_view text, const book::Font& font, double width,
                                  std::size_t maxLines) const;

private:
    Canvas& canvas_;
    const TextMeasure& measure_;
};

} // namespace orrery::look
