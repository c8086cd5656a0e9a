#include "look/painter/text_bodies.h"

#include "look/layout/styled_text.h"
#include "look/painter/cell_texts.h"
#include "look/text/characters.h"

#include <algorithm>
#include <utility>

namespace orrery::look {

namespace {

constexpr std::size_t kMostParagraphs = 5'000;
constexpr std::size_t kMostText = 65'536;
constexpr double kEndlessLine = 1e7;

/// A line before it has its place in the height.
struct BodyLine {
    TextLine line;
    double ascent = 0;
    double height = 0;
};

class TextBodyLines {
public:
    TextBodyLines(const book::TextBody& body, double room, const TextMeasure& measure)
        : body_(body), room_(room), measure_(measure)
    {
        for (const auto& paragraph : body.paragraphs) {
            if (paragraphs_++ >= kMostParagraphs || textSize_ > kMostText)
                break;
            AddParagraph(paragraph);
        }
    }

    std::vector<BodyLine> lines;
    double height = 0;
    double width = 0; ///< of the widest line

private:
    void AddParagraph(const book::Paragraph& paragraph)
    {
        std::string text;
        std::vector<book::TextRun> runs;
        for (const auto& run : paragraph.runs) {
            if (textSize_ + run.text.size() > kMostText)
                break;
            runs.push_back({text.size(), run.font});
            text += run.text;
            textSize_ += run.text.size();
        }
        const bool isRightToLeft = BeginsRightToLeft(text);
        const book::Font font = runs.empty() ? book::Font{} : runs.front().font;
        const StyledText styled(std::move(text), font, runs, measure_);
        for (const auto& span : styled.Break(body_.wraps ? room_ : kEndlessLine))
            AddLine(styled, span, paragraph.alignment, isRightToLeft);
    }

    void AddLine(const StyledText& styled, TextSpan span, book::HorizontalAlignment alignment,
                 bool isRightToLeft)
    {
        BodyLine made;
        made.line.isRightToLeft = isRightToLeft;
        made.line.width = styled.AddPieces(span, isRightToLeft, 0, made.line.pieces);
        const double free = room_ - made.line.width;
        if (alignment == book::HorizontalAlignment::Center)
            made.line.x = free / 2;
        else if (alignment == book::HorizontalAlignment::Right)
            made.line.x = free;
        const auto metrics = styled.Metrics(span);
        made.ascent = metrics.ascent + (metrics.height - metrics.ascent - metrics.descent) / 2;
        made.height = metrics.height;
        height += made.height;
        width = std::max(width, made.line.width);
        lines.push_back(std::move(made));
    }

    const book::TextBody& body_;
    double room_;
    const TextMeasure& measure_;
    std::size_t paragraphs_ = 0;
    std::size_t textSize_ = 0;
};

double TopOf(book::VerticalAlignment vertical, const Box& inner, double height)
{
    switch (vertical) {
    case book::VerticalAlignment::Center:
        return inner.y + std::max((inner.height - height) / 2, 0.0);
    case book::VerticalAlignment::Bottom:
        return inner.Bottom() - height;
    default:
        return inner.y;
    }
}

void PaintLines(const book::TextBody& body, const Box& box, const TextMeasure& measure,
                Canvas& canvas)
{
    const double left = body.left * kPixelsPerPoint;
    const double top = body.top * kPixelsPerPoint;
    const Box inner{box.x + left, box.y + top,
                    std::max(box.width - left - body.right * kPixelsPerPoint, 1.0),
                    std::max(box.height - top - body.bottom * kPixelsPerPoint, 0.0)};
    TextBodyLines text(body, inner.width, measure);
    const bool isCut = text.height > box.height + 1 || (body.wraps && text.width > box.width + 1);
    if (isCut)
        canvas.Clip(box);
    double y = TopOf(body.vertical, inner, text.height);
    for (auto& made : text.lines) {
        if (isCut && y > box.Bottom())
            break;
        made.line.x += inner.x;
        made.line.baseline = y + made.ascent;
        PaintLine(made.line, canvas);
        y += made.height;
    }
    if (isCut)
        canvas.Restore();
}

} // namespace

void PaintTextBody(const book::TextBody& body, const Box& box, const TextMeasure& measure,
                   Canvas& canvas)
{
    if (body.rotation != 90 && body.rotation != 270) {
        PaintLines(body, box, measure, canvas);
        return;
    }
    const Point middle = box.Middle();
    canvas.Rotate(middle, body.rotation);
    PaintLines(body, {middle.x - box.height / 2, middle.y - box.width / 2, box.height, box.width},
               measure, canvas);
    canvas.Restore();
}

} // namespace orrery::look
