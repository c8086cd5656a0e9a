#include "engines/common/cell_text.h"

#include "book/error.h"
#include "util/error.h"

#include <string>

namespace orrery::engines {
namespace {

/// Whether the byte continues a UTF-8 character.
bool IsContinuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

std::size_t Utf16Length(std::string_view utf8)
{
    std::size_t units = 0;
    for (const char c : utf8) {
        if (!IsContinuation(c))
            units += static_cast<unsigned char>(c) >= 0xF0 ? 2 : 1;
    }
    return units;
}

/// The beginning of a long text, for the error.
std::string Beginning(std::string_view text)
{
    std::size_t end = 30;
    while (end > 0 && IsContinuation(text[end])) // within a character
        --end;
    return std::string(text.substr(0, end));
}

} // namespace

void CheckTextLength(std::string_view utf8)
{
    if (Utf16Length(utf8) > kMaxTextLength)
        throw util::Error(book::ErrorKind::TextTooLong, Beginning(utf8));
}

} // namespace orrery::engines
