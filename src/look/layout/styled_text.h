#pragma once

#include "look/layout/layout.h"
#include "look/text/line_break.h"
#include "look/text/text_measure.h"

#include <string>
#include <vector>

namespace orrery::look {

/// A text whose parts may have fonts of their own, as it is measured and drawn.
class StyledText {
public:
    /// Runs that do not rise, or begin within a character, are left out. The measure is kept.
    StyledText(std::string text, const book::Font& font, const std::vector<book::TextRun>& runs,
               const TextMeasure& measure);

    const std::string& Text() const { return text_; }
    TextSpan All() const { return {0, text_.size()}; }
    double Width(TextSpan span) const;
    /// The largest of the fonts in it; of an empty span those of the font at its beginning.
    LineMetrics Metrics(TextSpan span) const;
    std::vector<TextSpan> Break(double room) const;
    /// Appends the pieces of a line from left to right, from x on, and returns where they end.
    double AddPieces(TextSpan line, bool isRightToLeft, double x,
                     std::vector<TextPiece>& pieces) const;
    /// Makes all fonts smaller.
    void Scale(double factor);

private:
    struct Part {
        TextSpan span;
        book::Font font;
    };
    void AddPart(TextSpan span, const Part& part, double& x, std::vector<TextPiece>& pieces) const;
    std::size_t PartAt(std::size_t offset) const;

    std::string text_;
    std::vector<Part> parts_; ///< at least one
    const TextMeasure* measure_;
};

} // namespace orrery::look
