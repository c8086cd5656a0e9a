#include "look/chart/text_painter.h"

#include <algorithm>

namespace orrery::look {

void TextPainter::Draw(std::string_view text, const book::Font& font, Point at, TextSide side) const
{
    if (text.empty())
        return;
    const double width = Width(text, font);
    if (side == TextSide::Middle)
        at.x -= width / 2;
    else if (side == TextSide::Right)
        at.x -= width;
    at.y += measure_.Metrics(font).ascent;
    canvas_.DrawText(at, text, {font, font.color.value_or(book::kBlack), false}, width);
}

void TextPainter::DrawCentered(std::string_view text, const book::Font& font, Point at,
                               TextSide side) const
{
    Draw(text, font, {at.x, at.y - LineHeight(font) / 2}, side);
}

void TextPainter::DrawUpwards(std::string_view text, const book::Font& font, Point middle) const
{
    canvas_.Rotate(middle, -90);
    DrawCentered(text, font, middle, TextSide::Middle);
    canvas_.Restore();
}

std::vector<std::string> TextPainter::Wrap(std::string_view text, const book::Font& font,
                                           double width, std::size_t maxLines) const
{
    std::vector<std::string> lines;
    std::string line;
    const auto finish = [&] {
        if (lines.size() < maxLines)
            lines.push_back(line);
        line.clear();
    };
    std::size_t at = 0;
    while (at < text.size() && lines.size() < maxLines) {
        const std::size_t end = std::min(text.find_first_of(" \n", at), text.size());
        std::string longer = line;
        if (!line.empty())
            longer += ' ';
        longer += text.substr(at, end - at);
        if (!line.empty() && Width(longer, font) > width) {
            finish();
            line = text.substr(at, end - at);
        }
        else
            line = std::move(longer);
        if (end < text.size() && text[end] == '\n')
            finish();
        at = end + 1;
    }
    if (!line.empty())
        finish();
    return lines;
}

} // namespace orrery::look
