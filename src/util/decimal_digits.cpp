#include "util/decimal_digits.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string_view>

namespace orrery::util {
namespace {

bool IsDigit(char symbol)
{
    return symbol >= '0' && symbol <= '9';
}

double ValueOf(const Digits& number)
{
    const std::string text =
        number.digits + 'e' +
        std::to_string(number.exponent + 1 - static_cast<int>(number.digits.size()));
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return number.isNegative ? -value : value;
}

/// Leaves out what stands between the digits: the decimal point of some locale.
void AppendDigits(std::string_view text, std::string& digits)
{
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), IsDigit);
}

} // namespace

Digits RoundToDigits(double number, int count)
{
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.*e", count - 1, number);
    const std::string_view text = buffer.data();
    const std::size_t mark = text.find('e');
    Digits rounded;
    rounded.isNegative = text.starts_with('-');
    AppendDigits(text.substr(0, mark), rounded.digits);
    rounded.exponent = std::atoi(text.substr(mark + 1).data());
    return rounded;
}

Digits ShortestDigits(double number)
{
    constexpr int kAlwaysKept = 15; // of every text
    Digits shortest;
    for (int count = kAlwaysKept; count <= kMostDigits; ++count) {
        shortest = RoundToDigits(number, count);
        if (ValueOf(shortest) == number)
            break;
    }
    shortest.digits.resize(std::max<std::size_t>(shortest.digits.find_last_not_of('0') + 1, 1));
    return shortest;
}

std::string DecimalText(double number, int decimals)
{
    constexpr int kMostBeforePoint = 320;
    std::string text(static_cast<std::size_t>(decimals + kMostBeforePoint), '\0');
    text.resize(static_cast<std::size_t>(
        std::snprintf(text.data(), text.size(), "%.*f", decimals, number)));
    std::string fixed = text.starts_with('-') ? "-" : "";
    AppendDigits(text, fixed);
    if (decimals > 0)
        fixed.insert(fixed.size() - static_cast<std::size_t>(decimals), ".");
    return fixed;
}

std::string ScientificText(const Digits& number)
{
    std::string text = number.isNegative ? "-" : "";
    text += number.digits.front();
    if (number.digits.size() > 1)
        text += '.' + number.digits.substr(1);
    const std::string power = std::to_string(std::abs(number.exponent));
    return text + (number.exponent < 0 ? "e-" : "e+") + (power.size() < 2 ? "0" : "") + power;
}

std::string PlainText(const Digits& number)
{
    std::string text = number.digits;
    const int whole = number.exponent + 1;
    if (whole <= 0)
        text.insert(0, "0." + std::string(static_cast<std::size_t>(-whole), '0'));
    else if (static_cast<std::size_t>(whole) < text.size())
        text.insert(static_cast<std::size_t>(whole), ".");
    else
        text.resize(static_cast<std::size_t>(whole), '0');
    return number.isNegative ? '-' + text : text;
}

std::string ShortestText(double number)
{
    const Digits digits = ShortestDigits(number);
    std::string plain = PlainText(digits);
    std::string scientific = ScientificText(digits);
    return plain.size() <= scientific.size() ? plain : scientific;
}

} // namespace orrery::util
