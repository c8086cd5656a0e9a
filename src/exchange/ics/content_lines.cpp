#include "exchange/ics/content_lines.h"

#include "util/code_page.h"
#include "util/text.h"

#include <algorithm>

namespace orrery::exchange {
namespace {

constexpr std::size_t kPiece = std::size_t{64} << 10U;

bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

} // namespace

ContentLines::ContentLines(util::InputFile& file) : file_(file), buffer_(kPiece)
{
    Fill();
    if (std::string_view(buffer_.data(), end_).starts_with(util::kByteOrderMark))
        at_ = util::kByteOrderMark.size();
}

bool ContentLines::Fill()
{
    at_ = 0;
    end_ = file_.Read(buffer_.data(), buffer_.size());
    return end_ > 0;
}

/// Takes what is left of a line of the file, and its end.
void ContentLines::TakeRestOfLine(ContentLine& line)
{
    ++linesRead_;
    while (!IsAtEnd()) {
        const auto* const begin = buffer_.data() + at_;
        const auto* const end = buffer_.data() + end_;
        const auto* const lineEnd = std::find_if(begin, end, IsLineEnd);
        const auto length = static_cast<std::size_t>(lineEnd - begin);
        const std::size_t room = kLongest - std::min(line.text.size(), kLongest);
        line.text.append(begin, std::min(length, room));
        line.isTooLong = line.isTooLong || length > room;
        at_ += length;
        if (lineEnd != end)
            break;
    }
    if (IsAtEnd())
        return;
    if (buffer_[at_++] == '\r' && !IsAtEnd() && buffer_[at_] == '\n')
        ++at_;
}

bool ContentLines::Next(ContentLine& line)
{
    if (IsAtEnd())
        return false;
    line.text.clear();
    line.isTooLong = false;
    line.number = linesRead_ + 1;
    TakeRestOfLine(line);
    while (!IsAtEnd() && (buffer_[at_] == ' ' || buffer_[at_] == '\t')) {
        ++at_;
        TakeRestOfLine(line);
    }
    // A NUL would end the text where a library reads it.
    std::replace(line.text.begin(), line.text.end(), '\0', ' ');
    if (!line.isTooLong && !util::IsValidUtf8(line.text))
        line.text = util::DecodeCodePage(line.text);
    return true;
}

} // namespace orrery::exchange
