#include "util/sentence.h"

#include "util/unicode.h"

namespace orrery::util {

std::string Printable(std::string_view text)
{
    std::string printable;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t character = NextCharacter(text, at);
        if (character < 0x20 || (character >= 0x7F && character < 0xA0))
            AppendUtf8(printable, 0xFFFD);
        else
            printable += text.substr(begin, at - begin);
    }
    return printable;
}

std::string Quoted(const std::string& subject)
{
    return '"' + subject + '"';
}

std::string QuotedBeginning(std::string_view text)
{
    constexpr std::size_t kMost = 80; // bytes
    if (text.size() <= kMost)
        return Quoted(std::string(text));
    std::size_t end = 0; // of the last character that fits
    for (std::size_t at = 0; at <= kMost; NextCharacter(text, at))
        end = at;
    return Quoted(std::string(text.substr(0, end)) + "...");
}

std::string QuotedOr(const std::string& subject, const char* unknown)
{
    return subject.empty() ? unknown : Quoted(subject);
}

std::string Because(const ErrorDetails& details)
{
    std::string cause = Printable(details.cause);
    while (cause.ends_with('.'))
        cause.pop_back();
    return cause.empty() ? cause : ": " + cause;
}

} // namespace orrery::util
