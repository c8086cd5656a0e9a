#include "look/number_format/decimal.h"

#include "util/numbers.h"

#include <utility>

namespace orrery::look {
namespace {

constexpr int kSignificantDigits = 15;

void DropLastZeros(Decimal& number)
{
    const auto last = number.digits.find_last_not_of('0');
    number.digits.resize(last == std::string::npos ? 0 : last + 1);
    if (number.digits.empty()) {
        number.point = 0;
    }
}

/// Adds one to the last digit of a number.
void Increment(Decimal& number)
{
    for (std::size_t i = number.digits.size(); i-- > 0;) {
        if (number.digits[i] != '9') {
            ++number.digits[i];
            return;
        }
        number.digits[i] = '0';
    }
    number.digits.assign(1, '1'); // all were nines
    ++number.point;
}

} // namespace

void Decimal::Shift(int places)
{
    if (!IsZero()) {
        point += places;
    }
}

void Decimal::Round(int places)
{
    const int kept = point + places;
    if (IsZero() || kept >= static_cast<int>(digits.size())) {
        return;
    }
    if (kept < 0) {
        *this = {};
        return;
    }
    const bool isUp = digits[static_cast<std::size_t>(kept)] >= '5';
    digits.resize(static_cast<std::size_t>(kept));
    if (isUp) {
        Increment(*this);
    }
    DropLastZeros(*this);
}

std::string Decimal::Whole() const
{
    if (point <= 0) {
        return {};
    }
    std::string whole = digits.substr(0, static_cast<std::size_t>(point));
    whole.resize(static_cast<std::size_t>(point), '0');
    return whole;
}

char Decimal::FractionDigit(int place) const
{
    const int at = point + place;
    return at < 0 || at >= static_cast<int>(digits.size()) ? '0'
                                                           : digits[static_cast<std::size_t>(at)];
}

Decimal ToDecimal(double number)
{
    util::Digits rounded = util::RoundToDigits(number, kSignificantDigits);
    Decimal decimal{std::move(rounded.digits), rounded.exponent + 1};
    DropLastZeros(decimal);
    return decimal;
}

} // namespace orrery::look
