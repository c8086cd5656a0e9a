#include "look/number_format/general_number.h"

#include "look/number_format/decimal.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace orrery::look {
namespace {

/// Smaller numbers get an exponent unless all of their digits fit.
constexpr int kLeastPoint = -3; // of 0.0001

constexpr int kMostCharacters = 11;
constexpr int kMostMantissaPlaces = 5; // also "9.33262E+157", which is longer

std::string Fixed(const Decimal& number)
{
    std::string text = number.Whole();
    if (text.empty()) {
        text = "0";
    }
    const int places = static_cast<int>(number.digits.size()) - number.point;
    if (places > 0) {
        text += '.';
    }
    for (int place = 0; place < places; ++place) {
        text += number.FractionDigit(place);
    }
    return text;
}

std::string Exponent(int exponent)
{
    const std::string digits = std::to_string(std::abs(exponent));
    return std::string("E") + (exponent < 0 ? '-' : '+') + (digits.size() < 2 ? "0" : "") + digits;
}

std::string Scientific(Decimal number, int characters)
{
    const int exponentLength = static_cast<int>(Exponent(number.point - 1).size());
    const int places = characters >= kMostCharacters ? kMostMantissaPlaces
                                                     : std::max(0, characters - exponentLength - 2);
    number.Round(places + 1 - number.point);
    const int exponent = number.point - 1;
    number.point = 1;
    return Fixed(number) + Exponent(exponent);
}

std::string Unsigned(const Decimal& number, int characters)
{
    characters = std::min(characters, kMostCharacters);
    const int places = std::max(0, characters - std::max(number.point, 1) - 1);
    Decimal rounded = number;
    rounded.Round(places);
    const bool isExact = rounded.digits == number.digits && rounded.point == number.point;
    const bool isSmall = number.point < kLeastPoint && !isExact;
    if (rounded.point > characters || isSmall) {
        return Scientific(number, characters);
    }
    return Fixed(rounded);
}

} // namespace

std::string FormatGeneral(double number, int characters)
{
    if (!std::isfinite(number)) {
        return std::string(ErrorText(book::CellError::Number));
    }
    const std::string text = Unsigned(ToDecimal(number), std::max(characters, 1));
    return number < 0 && text != "0" ? "-" + text : text;
}

std::string_view ErrorText(book::CellError error)
{
    switch (error) {
    case book::CellError::Null:
        return "#NULL!";
    case book::CellError::DivisionByZero:
        return "#DIV/0!";
    case book::CellError::Value:
        return "#VALUE!";
    case book::CellError::Reference:
        return "#REF!";
    case book::CellError::Name:
        return "#NAME?";
    case book::CellError::Number:
        return "#NUM!";
    case book::CellError::NotAvailable:
        return "#N/A";
    case book::CellError::GettingData:
        return "#GETTING_DATA";
    case book::CellError::Spill:
        return "#SPILL!";
    case book::CellError::Calculation:
        return "#CALC!";
    }
    return "#N/A";
}

} // namespace orrery::look
