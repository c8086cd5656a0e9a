#include "look/evaluate/values/decimals.h"

#include "util/numbers.h"

#include <cmath>
#include <string_view>

namespace orrery::formula {
namespace {

constexpr int kDigits = 15;
constexpr double kNear = 1.0 / (1LL << 48);

void Increment(std::string& digits)
{
    for (std::size_t at = digits.size(); at-- > 0;) {
        if (digits[at] != '9') {
            ++digits[at];
            return;
        }
        digits[at] = '0';
    }
    digits.insert(digits.begin(), '1');
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
    const int exponent = static_cast<int>(digits.size()) - 1 - places;
    return util::NumberOf({decimal.isNegative, digits, exponent});
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
    constexpr int kLongest = 20; // digits before the point, or behind it
    if (exponent <= kLongest && count - 1 - exponent < kLongest)
        return PlainText(decimal);
    std::string text = ScientificText(decimal);
    text[text.find('e')] = 'E';
    return text;
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
