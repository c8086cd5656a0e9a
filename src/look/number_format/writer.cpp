#include "look/number_format/writer.h"

#include <string>

namespace orrery::look {
void Writer::Digits(std::string_view digits)
{
    for (const char digit : digits) {
        Digit(digit);
    }
}

void Writer::General(std::string_view number)
{
    const auto whole = number.substr(0, number.find_first_not_of("0123456789"));
    const bool hasExponent = number.find('E') != std::string_view::npos;
    if (!numerals_.HasWords() || hasExponent) {
        return Digits(number);
    }
    numerals_.AppendWords(value_.text, whole, false);
    Digits(number.substr(whole.size()));
}

void Writer::DatePart(std::int64_t number, std::size_t width)
{
    if (numerals_.HasWords()) {
        return numerals_.AppendWords(value_.text, std::to_string(number), true);
    }
    Padded(number, width);
}

void Writer::Padded(std::int64_t number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    for (std::size_t i = digits.size(); i < width; ++i) {
        Digit('0');
    }
    Digits(digits);
}

void Writer::Fixed(const Token& token)
{
    switch (token.kind) {
    case TokenKind::Literal:
        return Text(token.text);
    case TokenKind::Blank:
        return Text(" ");
    case TokenKind::Percent:
        return Text("%");
    case TokenKind::Fill:
        if (!value_.fillAt) {
            value_.fillAt = value_.text.size();
            value_.fillCharacter = token.text;
        }
        return;
    default:
        return;
    }
}

} // namespace orrery::look
