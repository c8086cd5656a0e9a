#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace orrery::look {

/// A part of a text: the bytes from `begin` up to `end`.
struct TextSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
};

/// The width of a part of the text in pixels.
using SpanWidth = std::function<double(TextSpan)>;

/// The lines between the line ends of a text (CR LF, LF or CR), at least one.
std::vector<TextSpan> SplitAtLineEnds(std::string_view text);

/// Breaks a text into lines that are at most `room` wide: after blanks and hyphens, beside East
/// Asian characters, and at line ends. A word that is too wide alone is broken between the user's
/// characters, of which a line has at least one. Blanks at the end of a broken line are not in it.
std::vector<TextSpan> BreakLines(std::string_view text, double room, const SpanWidth& width);

} // namespace orrery::look
