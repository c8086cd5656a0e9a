#include "look/layout/styled_text.h"

#include "look/layout/bidi.h"
#include "look/text/characters.h"

#include <algorithm>

namespace orrery::look {
namespace {

bool IsWithinCharacter(const std::string& text, std::size_t at)
{
    return (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

TextSpan Common(TextSpan left, TextSpan right)
{
    return {std::max(left.begin, right.begin), std::min(left.end, right.end)};
}

/// Line ends within a line are not seen.
std::string WithoutLineEnds(std::string_view text)
{
    std::string without(text);
    std::erase_if(without, [](char c) { return c == '\n' || c == '\r'; });
    return without;
}

} // namespace

StyledText::StyledText(std::string text, const book::Font& font,
                       const std::vector<book::TextRun>& runs, const TextMeasure& measure)
    : text_(std::move(text)), measure_(&measure)
{
    parts_.push_back({{0, text_.size()}, font});
    for (const book::TextRun& run : runs) {
        Part& last = parts_.back();
        if (run.begin >= text_.size() || run.begin < last.span.begin ||
            IsWithinCharacter(text_, run.begin))
            continue;
        if (run.begin == last.span.begin) {
            last.font = run.font;
            continue;
        }
        last.span.end = run.begin;
        parts_.push_back({{run.begin, text_.size()}, run.font});
    }
}

std::size_t StyledText::PartAt(std::size_t offset) const
{
    const auto after = std::upper_bound(
        parts_.begin(), parts_.end(), offset,
        [](std::size_t wanted, const Part& part) { return wanted < part.span.begin; });
    return static_cast<std::size_t>(after - parts_.begin()) - 1;
}

double StyledText::Width(TextSpan span) const
{
    double width = 0;
    for (std::size_t i = PartAt(span.begin); i < parts_.size(); ++i) {
        const TextSpan common = Common(span, parts_[i].span);
        if (common.begin >= common.end)
            break;
        width +=
            measure_->Width(std::string_view(text_).substr(common.begin, common.end - common.begin),
                            parts_[i].font);
    }
    return width;
}

LineMetrics StyledText::Metrics(TextSpan span) const
{
    LineMetrics largest;
    for (std::size_t i = PartAt(span.begin); i < parts_.size(); ++i) {
        if (parts_[i].span.begin >= span.end && parts_[i].span.begin > span.begin)
            break;
        book::Font font = parts_[i].font;
        font.position = book::TextPosition::Baseline; // raised ones do not change the line
        const LineMetrics metrics = measure_->Metrics(font);
        largest.ascent = std::max(largest.ascent, metrics.ascent);
        largest.descent = std::max(largest.descent, metrics.descent);
        largest.height = std::max(largest.height, metrics.height);
        largest.rowHeight = std::max(largest.rowHeight, metrics.rowHeight);
    }
    return largest;
}

std::vector<TextSpan> StyledText::Break(double room) const
{
    return BreakLines(text_, room, [this](TextSpan span) { return Width(span); });
}

void StyledText::AddPart(TextSpan span, const Part& part, double& x,
                         std::vector<TextPiece>& pieces) const
{
    TextPiece piece;
    piece.text = WithoutLineEnds(std::string_view(text_).substr(span.begin, span.end - span.begin));
    if (piece.text.empty())
        return;
    piece.font = part.font;
    piece.color = part.font.color;
    piece.x = x;
    piece.width = measure_->Width(piece.text, part.font);
    x += piece.width;
    pieces.push_back(std::move(piece));
}

double StyledText::AddPieces(TextSpan line, bool isRightToLeft, double x,
                             std::vector<TextPiece>& pieces) const
{
    const std::string_view text(text_);
    const bool isOneWay =
        !isRightToLeft && !HasRightToLeft(text.substr(line.begin, line.end - line.begin));
    const std::vector<DirectionalRun> runs = isOneWay ? std::vector<DirectionalRun>{{line, false}}
                                                      : VisualRuns(text, line, isRightToLeft);
    for (const DirectionalRun& run : runs) {
        if (run.span.begin >= run.span.end)
            continue;
        const std::size_t first = PartAt(run.span.begin);
        const std::size_t last = PartAt(run.span.end - 1);
        for (std::size_t i = 0; i <= last - first; ++i) {
            const Part& part = parts_[run.isRightToLeft ? last - i : first + i];
            AddPart(Common(run.span, part.span), part, x, pieces);
        }
    }
    return x;
}

void StyledText::Scale(double factor)
{
    constexpr double kSmallest = 1; // points
    for (Part& part : parts_)
        part.font.size = std::max(part.font.size * factor, std::min(part.font.size, kSmallest));
}

} // namespace orrery::look
