#include "look/layout/cell_text.h"

#include "look/layout/fit_number.h"
#include "look/layout/styled_text.h"
#include "look/text/characters.h"
#include "look/text/line_break.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orrery::look {
namespace {

using book::HorizontalAlignment;
using book::VerticalAlignment;

/// More than any cell shows.
constexpr std::size_t kMostLines = 2000;

/// Lays the text of one cell into a box, as if it were not turned.
class Placer {
public:
    Placer(CellBox& cell, const TextRoom& room)
        : cell_(cell), room_(room), alignment_(DrawnAlignment(cell.display)),
          isRightToLeft_(IsRightToLeftText(cell.display)),
          text_(cell.display.text, cell.display.style->font, cell.display.runs, *room.measure)
    {
    }

    void Place()
    {
        const std::int16_t rotation = Style().alignment.rotation;
        if (rotation == book::Alignment::kStacked)
            PlaceStacked();
        else if (rotation != 0)
            PlaceTurned(rotation);
        else
            PlaceUpright();
    }

private:
    const book::CellStyle& Style() const { return *cell_.display.style; }
    double Indent() const
    {
        return room_.indentWidth * std::clamp<double>(Style().alignment.indent, 0, 250);
    }

    /// The room for a line in a box of that width.
    double LineRoom(double width) const
    {
        const bool isIndentedTwice = alignment_ == HorizontalAlignment::Distributed;
        const bool isIndented = alignment_ != HorizontalAlignment::Center &&
                                alignment_ != HorizontalAlignment::CenterContinuous;
        const double indent = isIndentedTwice ? 2 * Indent() : isIndented ? Indent() : 0;
        return std::max(width - 2 * kCellMargin - indent - iconWidth_, 0.0);
    }

    void PlaceUpright()
    {
        PlaceIcon();
        if (cell_.display.text.empty())
            return;
        const double lineRoom = LineRoom(cell_.box.width);
        if (cell_.display.fillAt)
            return PlaceFilled(lineRoom);
        if (IsWrapped(cell_.display))
            SetLines(text_.Break(lineRoom), lineRoom);
        else
            PlaceOneLine(lineRoom);
        AlignVertically(cell_.box);
        AlignHorizontally(cell_.box);
        SetClip();
    }

    void PlaceOneLine(double lineRoom)
    {
        const double width = text_.Width(text_.All());
        if (cell_.display.isTooWide) {
            FillWithSigns(lineRoom);
        }
        else if (width > lineRoom && Style().alignment.shrink && width > 0) {
            text_.Scale(lineRoom / width);
        }
        else if (width > lineRoom + kTolerance && cell_.display.isNumber) {
            ReplaceNumber(lineRoom);
        }
        else if (alignment_ == HorizontalAlignment::Fill && width > 0) {
            Repeat(lineRoom / width);
        }
        SetLines({text_.All()}, lineRoom);
    }

    void ReplaceText(std::string text)
    {
        text_ = StyledText(std::move(text), Style().font, {}, *room_.measure);
    }

    void ReplaceNumber(double lineRoom)
    {
        const auto fits = [&](std::string_view text) {
            return room_.measure->Width(text, Style().font) <= lineRoom + kTolerance;
        };
        std::string text;
        if (cell_.display.isGeneralNumber)
            text = FitGeneralNumber(cell_.display.number, fits);
        if (text.empty())
            return FillWithSigns(lineRoom);
        ReplaceText(std::move(text));
    }

    void FillWithSigns(double lineRoom)
    {
        ReplaceText(NumberSigns(lineRoom, room_.measure->Width("#", Style().font)));
    }

    void Repeat(double times)
    {
        constexpr double kMost = 1000;
        std::string repeated;
        for (auto left = static_cast<int>(std::clamp(times, 1.0, kMost)); left > 0; --left)
            repeated += text_.Text();
        ReplaceText(std::move(repeated));
    }

    /// The text before the repeated character stands left, the one behind it right.
    void PlaceFilled(double lineRoom)
    {
        const std::string& text = cell_.display.text;
        const std::size_t at = std::min(*cell_.display.fillAt, text.size());
        const TextMeasure& measure = *room_.measure;
        const book::Font& font = Style().font;
        const double rest = lineRoom - measure.Width(text, font);
        if (rest < -kTolerance && cell_.display.isNumber) {
            ReplaceNumber(lineRoom);
        }
        else if (rest > 0) {
            const std::string& fill = cell_.display.fillCharacter;
            const double one = measure.Width(fill, font);
            std::string filled = text.substr(0, at);
            for (double used = one; one > 0 && used <= rest && filled.size() < 4000; used += one)
                filled += fill;
            ReplaceText(filled + text.substr(at));
        }
        SetLines({text_.All()}, lineRoom);
        AlignVertically(cell_.box);
        AlignHorizontally(cell_.box);
        if (rest >= 0 && cell_.lines.size() == 1)
            MoveApart(text.substr(at), lineRoom);
        SetClip();
    }

    /// The last part of a filled line ends at the margin, whatever the repeated characters leave.
    void MoveApart(const std::string& behind, double lineRoom)
    {
        TextLine& line = cell_.lines.front();
        line.x =
            cell_.box.x + kCellMargin + (alignment_ == HorizontalAlignment::Left ? Indent() : 0);
        if (line.pieces.size() != 1 || !line.pieces[0].text.ends_with(behind) || behind.empty())
            return;
        TextPiece last = line.pieces[0];
        line.pieces[0].text.erase(line.pieces[0].text.size() - behind.size());
        line.pieces[0].width = room_.measure->Width(line.pieces[0].text, last.font);
        last.text = behind;
        last.width = room_.measure->Width(behind, last.font);
        last.x = std::max(lineRoom - last.width, line.pieces[0].width);
        line.width = last.x + last.width;
        if (line.pieces[0].text.empty())
            line.pieces[0] = last;
        else
            line.pieces.push_back(last);
    }

    void SetLines(const std::vector<TextSpan>& spans, double lineRoom)
    {
        for (std::size_t i = 0; i < std::min(spans.size(), kMostLines); ++i) {
            const bool isLast = i + 1 == spans.size();
            const bool isSpread = alignment_ == HorizontalAlignment::Distributed ||
                                  (alignment_ == HorizontalAlignment::Justify && !isLast);
            AddLine(spans[i], isSpread && !isRightToLeft_ ? lineRoom : 0);
        }
    }

    /// `spreadOver` is the width over which its words are spread, or 0.
    void AddLine(TextSpan span, double spreadOver)
    {
        TextLine line;
        line.isRightToLeft = isRightToLeft_;
        line.width = text_.AddPieces(span, isRightToLeft_, 0, line.pieces);
        if (spreadOver > line.width)
            Spread(span, spreadOver, line);
        const LineMetrics metrics = text_.Metrics(span);
        line.baseline = height_ + metrics.ascent;
        height_ += metrics.height;
        cell_.lines.push_back(std::move(line));
    }

    void Spread(TextSpan span, double width, TextLine& line)
    {
        std::vector<TextSpan> words;
        for (std::size_t at = span.begin; at < span.end; ++at) {
            const bool isBlank = text_.Text()[at] == ' ';
            if (!isBlank && (at == span.begin || text_.Text()[at - 1] == ' '))
                words.push_back({at, at});
            if (!isBlank)
                words.back().end = at + 1;
        }
        if (words.size() < 2)
            return;
        double used = 0;
        for (const TextSpan word : words)
            used += text_.Width(word);
        const double gap = (width - used) / static_cast<double>(words.size() - 1);
        line.pieces.clear();
        double x = 0;
        for (const TextSpan word : words)
            x = text_.AddPieces(word, false, x, line.pieces) + gap;
        line.width = width;
    }

    /// Moves the lines, which begin at 0, into the box.
    void AlignVertically(const Box& box)
    {
        const double room = box.height - 2 * kCellMargin;
        const VerticalAlignment vertical = Style().alignment.vertical;
        double y = box.y + kCellMargin;
        double gap = 0;
        const auto count = static_cast<double>(cell_.lines.size());
        if (vertical == VerticalAlignment::Bottom)
            y = box.Bottom() - kCellMargin - height_;
        else if (vertical == VerticalAlignment::Center ||
                 (vertical == VerticalAlignment::Distributed && count < 2))
            y += (room - height_) / 2;
        else if (vertical != VerticalAlignment::Top && count > 1)
            gap = std::max((room - height_) / (count - 1), 0.0);
        for (TextLine& line : cell_.lines) {
            line.baseline += y;
            y += gap;
        }
    }

    void AlignHorizontally(const Box& box)
    {
        for (TextLine& line : cell_.lines) {
            const double left = box.x + kCellMargin + iconWidth_;
            const double right = box.Right() - kCellMargin;
            switch (alignment_) {
            case HorizontalAlignment::Center:
            case HorizontalAlignment::CenterContinuous:
                line.x = (left + right - line.width) / 2;
                break;
            case HorizontalAlignment::Right:
                line.x = right - Indent() - line.width;
                break;
            case HorizontalAlignment::Distributed:
                line.x = (left + right - line.width) / 2; // one word alone is in the middle
                break;
            default:
                line.x = isRightToLeft_ && IsSpread(alignment_) ? right - Indent() - line.width
                                                                : left + Indent();
            }
        }
    }

    /// As far as the text goes, but not over neighbours that are not empty.
    void SetClip()
    {
        cell_.clip = cell_.box;
        if (!MayOverflow(cell_.display))
            return;
        double left = cell_.box.x;
        double right = cell_.box.Right();
        for (const TextLine& line : cell_.lines) {
            left = std::min(left, line.x - kCellMargin);
            right = std::max(right, line.x + line.width + kCellMargin);
        }
        left = std::max(left, std::min(room_.left, cell_.box.x));
        right = std::min(right, std::max(room_.right, cell_.box.Right()));
        cell_.clip.x = left;
        cell_.clip.width = right - left;
    }

    void PlaceIcon()
    {
        if (!cell_.display.icon)
            return;
        constexpr double kGap = 1;
        const double wanted = std::round(Style().font.size * kPixelsPerPoint * 1.1);
        const double size =
            std::max(std::min({wanted, cell_.box.height - 2 * kGap, cell_.box.width}), 0.0);
        Box icon{cell_.box.x + kCellMargin, cell_.box.Bottom() - kGap - size, size, size};
        if (Style().alignment.vertical == VerticalAlignment::Top)
            icon.y = cell_.box.y + kGap;
        else if (Style().alignment.vertical != VerticalAlignment::Bottom)
            icon.y = cell_.box.Middle().y - size / 2;
        if (!cell_.display.showsValue && alignment_ == HorizontalAlignment::Center)
            icon.x = cell_.box.Middle().x - size / 2;
        else if (!cell_.display.showsValue && alignment_ == HorizontalAlignment::Right)
            icon.x = cell_.box.Right() - kCellMargin - size;
        cell_.iconBox = icon;
        iconWidth_ = size + kGap;
    }

    /// Each of the user's characters is a line of its own.
    void PlaceStacked()
    {
        const std::string& text = text_.Text();
        for (std::size_t at = 0; at < text.size() && cell_.lines.size() < kMostLines;) {
            const std::size_t end = ClusterEnd(text, at);
            AddLine({at, end}, 0);
            at = end;
        }
        AlignVertically(cell_.box);
        double widest = 0;
        for (const TextLine& line : cell_.lines)
            widest = std::max(widest, line.width);
        AlignHorizontally(cell_.box);
        for (TextLine& line : cell_.lines) { // in the middle of the column that they make
            const double slack = (widest - line.width) / 2;
            if (alignment_ == HorizontalAlignment::Right)
                line.x -= slack;
            else if (alignment_ != HorizontalAlignment::Center)
                line.x += slack;
        }
        cell_.clip = cell_.box;
    }

    /// The block of lines is placed so that it is at the right place when it is turned around its
    /// middle.
    void PlaceTurned(std::int16_t degrees)
    {
        if (cell_.display.text.empty())
            return;
        const double angle = std::clamp<double>(degrees, -90, 90) * std::numbers::pi / 180;
        const double sine = std::abs(std::sin(angle));
        const double cosine = std::abs(std::cos(angle));
        const bool isUpright = degrees == 90 || degrees == -90;
        const double lineRoom =
            std::max((isUpright ? cell_.box.height : cell_.box.width) - 2 * kCellMargin, 0.0);
        SetLines(IsWrapped(cell_.display) && isUpright ? text_.Break(lineRoom)
                                                       : std::vector<TextSpan>{text_.All()},
                 0);
        double width = 0;
        for (const TextLine& line : cell_.lines)
            width = std::max(width, line.width);
        const Box turned =
            TurnedBox(width * cosine + height_ * sine, width * sine + height_ * cosine);
        cell_.pivot = turned.Middle();
        cell_.rotation = degrees;
        for (TextLine& line : cell_.lines) {
            line.x = cell_.pivot.x - width / 2 + LineOffset(width - line.width);
            line.baseline += cell_.pivot.y - height_ / 2;
        }
        cell_.clip = cell_.box;
        if (!isUpright) { // slanted texts lean over their neighbours
            const double left = std::min(cell_.box.x, turned.x);
            cell_.clip.width = std::max(cell_.box.Right(), turned.Right()) - left;
            cell_.clip.x = left;
        }
    }

    /// Of lines within a block of lines that is turned upright: along the cell's height.
    double LineOffset(double slack) const
    {
        const VerticalAlignment vertical = Style().alignment.vertical;
        if (vertical == VerticalAlignment::Center)
            return slack / 2;
        const bool isUp = cell_.rotation > 0;
        return (vertical == VerticalAlignment::Top) == isUp ? slack : 0;
    }

    Box TurnedBox(double width, double height) const
    {
        const Box& box = cell_.box;
        Box turned{box.x + kCellMargin + Indent(), box.Bottom() - kCellMargin - height, width,
                   height};
        if (alignment_ == HorizontalAlignment::Right)
            turned.x = box.Right() - kCellMargin - Indent() - width;
        else if (alignment_ == HorizontalAlignment::Center || IsSpread(alignment_) ||
                 alignment_ == HorizontalAlignment::CenterContinuous)
            turned.x = box.Middle().x - width / 2;
        if (Style().alignment.vertical == VerticalAlignment::Top)
            turned.y = box.y + kCellMargin;
        else if (Style().alignment.vertical != VerticalAlignment::Bottom)
            turned.y = box.Middle().y - height / 2;
        return turned;
    }

    static constexpr double kTolerance = 0.01;

    CellBox& cell_;
    const TextRoom& room_;
    HorizontalAlignment alignment_;
    bool isRightToLeft_;
    StyledText text_;
    double iconWidth_ = 0;
    double height_ = 0; ///< of all lines
};

} // namespace

void PlaceCellText(CellBox& cell, const TextRoom& room)
{
    cell.clip = cell.box;
    if (!cell.display.showsValue)
        cell.display.text.clear();
    if (!cell.display.text.empty() || cell.display.icon)
        Placer(cell, room).Place();
}

} // namespace orrery::look
