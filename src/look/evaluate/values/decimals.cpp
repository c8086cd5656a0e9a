#include "look/evaluate/values/decimals.h"

#include "util/numbers.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace orrery::formula {
namespace {

constexpr int kDigits = 15;
constexpr double kNear = 1.0 / (1LL << 48);

double FromDigits(const std::string& digits, int exponent, bool isNegative)
{
    const std::string text = digits + "e" + std::to_string(exponent);
    double number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return isNegative ? -number : number;
}

void Increment(std::string& digits)
{
    for (std::size_t at = digits.size(); at-- > 0;) {
        if (digits[at] != '9') {
            ++digits[at];
            return;
        }
        digits[at] = '0';
    }
    digits.insert(0, "1");
}

bool GoesUp(std::string_view dropped, Rounding rounding)
{
    if (rounding == Rounding::TowardsZero)
        return false;
    if (rounding == Rounding::AwayFromZero)
        return dropped.find_first_not_of('0') != std::string_view::npos;
    return !dropped.empty() && dropped.front() >= '5';
}

} // namespace

double RoundDecimals(double number, double decimals, Rounding rounding)
{
    if (number == 0 || !std::isfinite(number) || decimals > 400)
        return number;
    const util::Digits decimal = util::RoundToDigits(number, kDigits);
    const int places = static_cast<int>(std::trunc(std::fmax(decimals, -400)));
    const int kept = decimal.exponent + 1 + places;
    if (kept >= kDigits)
        return number;
    std::string digits = kept > 0 ? decimal.digits.substr(0, static_cast<std::size_t>(kept)) : "0";
    std::string dropped =
        kept >= 0 ? decimal.digits.substr(static_cast<std::size_t>(kept)) : "0" + decimal.digits;
    if (GoesUp(dropped, rounding))
        Increment(digits);
    return FromDigits(digits, -places, decimal.isNegative);
}

std::string GeneralText(double number)
{
    if (number == 0 || !std::isfinite(number))
        return "0";
    util::Digits decimal = util::RoundToDigits(number, kDigits);
    std::string& digits = decimal.digits;
    digits.erase(digits.find_last_not_of('0') + 1);
    const int count = static_cast<int>(digits.size());
    const int exponent = decimal.exponent;
    const std::string sign = decimal.isNegative ? "-" : "";
    constexpr int kLongest = 20; // digits before the point, or behind it
    if (exponent > kLongest || count - 1 - exponent >= kLongest) {
        const int size = std::abs(exponent);
        std::string text = sign + digits.substr(0, 1) + (count > 1 ? "." + digits.substr(1) : "");
        return text + (exponent < 0 ? "E-" : "E+") + (size < 10 ? "0" : "") + std::to_string(size);
    }
    if (exponent < 0)
        return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    if (count <= exponent + 1)
        return sign + digits + std::string(static_cast<std::size_t>(exponent + 1 - count), '0');
    digits.insert(static_cast<std::size_t>(exponent) + 1, ".");
    return sign + digits;
}

bool IsNearly(double left, double right)
{
    return left == right || std::fabs(left - right) < std::fabs(left) * kNear;
}

double AddNearly(double left, double right)
{
    return (left < 0) != (right < 0) && IsNearly(left, -right) ? 0 : left + right;
}

} // namespace orrery::formula
