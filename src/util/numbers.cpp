#include "util/numbers.h"

#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <limits>

namespace orrery::util {

namespace {

bool IsDigit(char symbol)
{
    return symbol >= '0' && symbol <= '9';
}

/// Counts the digits from `start` on.
std::size_t CountDigits(std::string_view text, std::size_t start)
{
    std::size_t end = start;
    while (end < text.size() && IsDigit(text[end]))
        ++end;
    return end - start;
}

/// The parts of "digits[.digits][e[sign]digits]".
struct NumberShape {
    std::string_view whole;
    std::string_view fraction;
    std::string_view exponent; ///< with its "-" but without a "+"; empty if there is none
};

std::optional<NumberShape> ReadShape(std::string_view text)
{
    NumberShape shape;
    std::size_t pos = CountDigits(text, 0);
    if (pos == 0)
        return std::nullopt;
    shape.whole = text.substr(0, pos);
    if (pos < text.size() && text[pos] == '.') {
        const std::size_t run = CountDigits(text, pos + 1);
        if (run == 0)
            return std::nullopt;
        shape.fraction = text.substr(pos + 1, run);
        pos += 1 + run;
    }
    if (pos < text.size() && (text[pos] == 'e' || text[pos] == 'E')) {
        ++pos;
        if (pos < text.size() && text[pos] == '+')
            ++pos;
        const std::size_t sign = pos < text.size() && text[pos] == '-' && text[pos - 1] != '+';
        const std::size_t run = CountDigits(text, pos + sign);
        if (run == 0)
            return std::nullopt;
        shape.exponent = text.substr(pos, sign + run);
        pos += sign + run;
    }
    return pos == text.size() ? std::optional(shape) : std::nullopt;
}

bool IsZero(const NumberShape& shape)
{
    return shape.whole.find_first_not_of('0') == std::string_view::npos &&
           shape.fraction.find_first_not_of('0') == std::string_view::npos;
}

/// Whether a number that does not fit a double is too large rather than too small.
bool IsHuge(const NumberShape& shape)
{
    std::int64_t exponent = 0;
    if (shape.exponent.size() >= 18) // outweighs any mantissa that fits in memory
        return !shape.exponent.starts_with('-') && !IsZero(shape);
    std::from_chars(shape.exponent.data(), shape.exponent.data() + shape.exponent.size(), exponent);
    const std::size_t leading = shape.whole.find_first_not_of('0');
    if (leading != std::string_view::npos)
        return exponent + static_cast<std::int64_t>(shape.whole.size() - leading) > 0;
    const std::size_t zeros = shape.fraction.find_first_not_of('0');
    return zeros != std::string_view::npos && exponent > static_cast<std::int64_t>(zeros);
}

template <typename Whole> Whole RoundTo(double value)
{
    // The rounding mode is never changed from its default: to nearest, halves to even.
    const double rounded = std::nearbyint(value);
    // Written so that NaN fails too.
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max()))
        throw OverflowError();
    return static_cast<Whole>(rounded);
}

/// Adds one to the last digit; all nines become zeros.
void Increment(std::string& digits)
{
    const auto kept =
        std::find_if(digits.rbegin(), digits.rend(), [](char digit) { return digit != '9'; });
    std::fill(digits.rbegin(), kept, '0');
    if (kept != digits.rend())
        ++*kept;
}

/// Leaves out what stands between the digits: the decimal point of some locale.
void AppendDigits(std::string_view text, std::string& digits)
{
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), IsDigit);
}

} // namespace

std::optional<double> ReadNumber(std::string_view text)
{
    text = Trim(text);
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    const auto shape = ReadShape(text);
    if (!shape)
        return std::nullopt;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        value = IsHuge(*shape) ? std::numeric_limits<double>::infinity() : 0;
    return negative ? -value : value;
}

std::int16_t RoundTo16(double value)
{
    return RoundTo<std::int16_t>(value);
}

std::int32_t RoundTo32(double value)
{
    return RoundTo<std::int32_t>(value);
}

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

double NumberOf(const Digits& number)
{
    const std::string text =
        number.digits + 'e' +
        std::to_string(number.exponent + 1 - static_cast<int>(number.digits.size()));
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return number.isNegative ? -value : value;
}

Digits ShortestDigits(double number)
{
    constexpr int kAlwaysKept = 15; // of every text, but for numbers next to zero
    const bool isTiny = std::abs(number) < std::numeric_limits<double>::min();
    Digits shortest;
    for (int count = isTiny ? 1 : kAlwaysKept; count <= kMostDigits; ++count) {
        shortest = RoundToDigits(number, count);
        if (NumberOf(shortest) == number)
            break;
        Increment(shortest.digits); // numbers above a power of two are farther apart than below
        if (NumberOf(shortest) == number)
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
