#pragma once

#include "util/file_read.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orrery::exchange {

/// A line of an iCalendar file, unfolded, as UTF-8, without its end.
struct ContentLine {
    std::string text;
    std::size_t number = 0; ///< of its first line in the file, counted from 1
    bool isTooLong = false; ///< the text is only its beginning
};

/// Reads the lines of an iCalendar file piece by piece. Lines end with CR LF, LF or CR; one that
/// begins with a blank continues the line above it (RFC 5545 3.1), even within a character. A line
/// that is not valid UTF-8 is in the system's code page.
class ContentLines {
public:
    /// The longest line that is given whole, in bytes.
    static constexpr std::size_t kLongest = std::size_t{64} << 10U;

    explicit ContentLines(util::InputFile& file);
    /// The next line, which may be empty; false at the end.
    bool Next(ContentLine& line);

private:
    bool Fill();
    bool IsAtEnd() { return at_ == end_ && !Fill(); }
    void TakeRestOfLine(ContentLine& line);

    util::InputFile& file_;
    std::vector<char> buffer_;
    std::size_t at_ = 0;
    std::size_t end_ = 0;
    std::size_t linesRead_ = 0;
};

} // namespace orrery::exchange
