#include "look/text/line_break.h"

#include "look/text/characters.h"
#include "util/unicode.h"

namespace orrery::look {
namespace {

/// As widths are sums of fractions.
constexpr double kTolerance = 1e-6;

bool IsBlank(char32_t character)
{
    return character == ' ' || character == '\t' || character == 0x3000 ||
           (character >= 0x2000 && character <= 0x200B && character != 0x2007);
}

bool IsHyphen(char32_t character)
{
    return character == '-' || character == 0xAD || character == 0x2010 || character == 0x2013 ||
           character == 0x2014;
}

/// What may not begin a line: closing brackets, full stops, small kana and their like.
bool IsBoundToPrevious(char32_t character)
{
    constexpr std::u32string_view kBound = U"!%),.:;?]}\u2019\u201D\u2026\u3001\u3002\u3005\u3009"
                                           U"\u300B\u300D\u300F\u3011\u3015\u301F\u3041\u3043"
                                           U"\u3045\u3047\u3049\u3063\u3083\u3085\u3087\u30A1"
                                           U"\u30A3\u30A5\u30A7\u30A9\u30C3\u30E3\u30E5\u30E7"
                                           U"\u30FB\u30FC\uFF01\uFF09\uFF0C\uFF0E\uFF1A\uFF1B"
                                           U"\uFF1F\uFF3D\uFF5D";
    return kBound.find(character) != std::u32string_view::npos;
}

/// What may not end a line: opening brackets.
bool IsBoundToNext(char32_t character)
{
    constexpr std::u32string_view kBound = U"([{\u2018\u201C\u3008\u300A\u300C\u300E\u3010\u3014"
                                           U"\u301D\uFF08\uFF3B\uFF5B";
    return kBound.find(character) != std::u32string_view::npos;
}

bool MayBreak(char32_t before, char32_t after)
{
    if (IsBlank(after))
        return false; // blanks stay with the word before them
    if (IsBlank(before))
        return true;
    if (IsHyphen(before))
        return DirectionOf(after) != Direction::Digit && !IsBoundToPrevious(after);
    return (IsWide(before) || IsWide(after)) && !IsBoundToNext(before) && !IsBoundToPrevious(after);
}

/// The end of the characters that stay together, from `begin`; blanks behind them are theirs.
std::size_t PieceEnd(std::string_view text, TextSpan line, std::size_t begin)
{
    const std::string_view within = text.substr(0, line.end);
    std::size_t at = begin;
    char32_t before = util::NextCharacter(within, at);
    at = ClusterEnd(within, begin);
    while (at < line.end) {
        std::size_t next = at;
        const char32_t after = util::NextCharacter(within, next);
        if (MayBreak(before, after))
            return at;
        before = after;
        at = ClusterEnd(within, at);
    }
    return line.end;
}

std::size_t WithoutBlanks(std::string_view text, TextSpan span)
{
    while (span.end > span.begin) {
        std::size_t last = span.end - 1; // the first byte of the last character
        while (last > span.begin && (static_cast<unsigned char>(text[last]) & 0xC0) == 0x80)
            --last;
        std::size_t at = last;
        if (!IsBlank(util::NextCharacter(text, at)))
            break;
        span.end = last;
    }
    return span.end;
}

/// Lays the pieces of one line of the text into lines of the room.
class Breaker {
public:
    Breaker(std::string_view text, double room, const SpanWidth& width,
            std::vector<TextSpan>& lines)
        : text_(text), room_(room + kTolerance), width_(width), lines_(lines)
    {
    }

    void Break(TextSpan line)
    {
        current_ = {line.begin, line.begin};
        used_ = 0;
        for (std::size_t at = line.begin; at < line.end;) {
            const TextSpan piece{at, PieceEnd(text_, line, at)};
            Add(piece);
            at = piece.end;
        }
        lines_.push_back(current_);
    }

private:
    void Add(TextSpan piece)
    {
        const TextSpan word{piece.begin, WithoutBlanks(text_, piece)};
        const double width = width_(word);
        if (used_ + width > room_ && current_.end > current_.begin)
            EndLine(piece.begin);
        if (used_ + width > room_) {
            AddByCharacter(word);
            current_.end = piece.end;
        }
        else {
            used_ += width;
            current_.end = piece.end;
        }
        if (piece.end > word.end)
            used_ += width_({word.end, piece.end});
    }

    void AddByCharacter(TextSpan word)
    {
        for (std::size_t at = word.begin; at < word.end;) {
            const TextSpan cluster{at, ClusterEnd(text_.substr(0, word.end), at)};
            const double width = width_(cluster);
            if (used_ + width > room_ && current_.end > current_.begin)
                EndLine(at);
            used_ += width;
            current_.end = at = cluster.end;
        }
    }

    void EndLine(std::size_t next)
    {
        lines_.push_back({current_.begin, WithoutBlanks(text_, current_)});
        current_ = {next, next};
        used_ = 0;
    }

    std::string_view text_;
    double room_;
    const SpanWidth& width_;
    std::vector<TextSpan>& lines_;
    TextSpan current_;
    double used_ = 0;
};

} // namespace

std::vector<TextSpan> SplitAtLineEnds(std::string_view text)
{
    std::vector<TextSpan> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\n' && text[at] != '\r')
            continue;
        lines.push_back({begin, at});
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n')
            ++at;
        begin = at + 1;
    }
    lines.push_back({begin, text.size()});
    return lines;
}

std::vector<TextSpan> BreakLines(std::string_view text, double room, const SpanWidth& width)
{
    std::vector<TextSpan> lines;
    Breaker breaker(text, room, width, lines);
    for (const TextSpan line : SplitAtLineEnds(text))
        breaker.Break(line);
    return lines;
}

} // namespace orrery::look
