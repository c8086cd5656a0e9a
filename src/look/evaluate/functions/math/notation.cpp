#include "look/evaluate/functions/math/math.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

namespace orrery::formula {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr int kWidth = 10; // digits of the functions for engineers, the sign among them

std::string InBase(double number, int base)
{
    std::string digits;
    double rest = std::trunc(number);
    while (rest >= 1) {
        digits += kDigits[static_cast<std::size_t>(std::fmod(rest, base))];
        rest = std::trunc(rest / base);
    }
    std::reverse(digits.begin(), digits.end());
    return digits.empty() ? "0" : digits;
}

std::optional<double> FromBase(std::string_view text, int base)
{
    double number = 0;
    for (const char byte : util::ToUpperAscii(text)) {
        const std::size_t digit = kDigits.find(byte);
        if (digit >= static_cast<std::size_t>(base))
            return std::nullopt;
        number = number * base + static_cast<double>(digit);
    }
    return number;
}

/// Negative numbers are the ten digits of their complement.
Value ToNotation(Call& call, double number, int base, double lowest)
{
    const double places = call.Whole(1, 0);
    if (number < lowest || number >= -lowest || places < 0 || places > kWidth)
        return CellError::Number;
    if (number < 0)
        return InBase(std::pow(base, kWidth) + std::trunc(number), base);
    std::string digits = InBase(number, base);
    if (!call.Has(1))
        return digits;
    const auto width = static_cast<std::size_t>(places);
    if (digits.size() > width)
        return CellError::Number;
    return digits.insert(0, width - digits.size(), '0');
}

double OfNotation(Call& call, int base)
{
    const std::string text = call.Text(0);
    const auto number = FromBase(text, base);
    if (!call.Require(number && text.size() <= kWidth))
        return 0;
    const double all = std::pow(base, kWidth);
    return *number >= all / 2 ? *number - all : *number;
}

constexpr double kLowestBinary = -512;
constexpr double kLowestOctal = -536'870'912;
constexpr double kLowestHex = -549'755'813'888;

template <int From, int To> Value ChangeNotation(Call& call)
{
    const double number = From == 10 ? std::trunc(call.Number(0)) : OfNotation(call, From);
    if (To == 10)
        return number;
    return ToNotation(call, number, To,
                      To == 2   ? kLowestBinary
                      : To == 8 ? kLowestOctal
                                : kLowestHex);
}

Value Base(Call& call)
{
    const double number = call.Whole(0);
    const double base = call.Whole(1);
    const double width = call.Whole(2);
    if (number < 0 || number >= 9'007'199'254'740'992 || base < 2 || base > 36 || width < 0 ||
        width > 255)
        return CellError::Number;
    std::string digits = InBase(number, static_cast<int>(base));
    const auto wanted = static_cast<std::size_t>(width);
    return digits.size() < wanted ? digits.insert(0, wanted - digits.size(), '0') : digits;
}

Value Decimal(Call& call)
{
    const double base = call.Whole(1);
    const std::string text = call.Text(0);
    if (base < 2 || base > 36 || text.size() > 255)
        return CellError::Number;
    const auto number = FromBase(util::Trim(text), static_cast<int>(base));
    return number ? Value(*number) : Value(CellError::Number);
}

/// The digits of a Roman numeral from the most to the least classic form: each form allows more
/// letters to stand before larger ones.
Value Roman(Call& call)
{
    static constexpr std::array<std::pair<int, std::string_view>, 21> kForms = {{
        {1000, "M"}, {999, "IM"}, {995, "VM"}, {990, "XM"}, {950, "LM"}, {900, "CM"}, {500, "D"},
        {499, "ID"}, {495, "VD"}, {490, "XD"}, {450, "LD"}, {400, "CD"}, {100, "C"},  {99, "IC"},
        {95, "VC"},  {90, "XC"},  {50, "L"},   {49, "IL"},  {45, "VL"},  {40, "XL"},  {10, "X"},
    }};
    static constexpr std::array<std::pair<int, std::string_view>, 4> kOnes = {
        {{9, "IX"}, {5, "V"}, {4, "IV"}, {1, "I"}}};
    static constexpr std::array<int, 21> kLeastForm = {0, 4, 3, 2, 1, 0, 0, 4, 3, 2, 1,
                                                       0, 0, 2, 1, 0, 0, 2, 1, 0, 0};
    const double number = std::trunc(call.Number(0));
    const Value given = call.Single(1);
    const auto* logical = std::get_if<bool>(&given);
    const double form = logical != nullptr ? (*logical ? 0 : 4) : call.Whole(1);
    if (number < 0 || number > 3999 || form < 0 || form > 4)
        return CellError::Value;
    std::string text;
    int rest = static_cast<int>(number);
    const auto take = [&](int value, std::string_view letters) {
        for (; rest >= value; rest -= value)
            text += letters;
    };
    for (std::size_t at = 0; at < kForms.size(); ++at)
        if (kLeastForm[at] <= form)
            take(kForms[at].first, kForms[at].second);
    for (const auto& [value, letters] : kOnes)
        take(value, letters);
    return text;
}

Value Arabic(Call& call)
{
    const std::string text = util::ToUpperAscii(call.Text(0));
    if (text.size() > 255)
        return CellError::Value;
    static constexpr std::string_view kLetters = "IVXLCDM";
    static constexpr std::array<int, 7> kValues = {1, 5, 10, 50, 100, 500, 1000};
    double sum = 0;
    int highest = 0;
    const bool isNegative = text.starts_with('-');
    for (std::size_t at = text.size(); at-- > (isNegative ? 1U : 0U);) {
        const std::size_t letter = kLetters.find(text[at]);
        if (letter == std::string_view::npos)
            return CellError::Value;
        sum += kValues[letter] < highest ? -kValues[letter] : kValues[letter];
        highest = std::max(highest, kValues[letter]);
    }
    return isNegative ? -sum : sum;
}

} // namespace

const FunctionList& NotationFunctions()
{
    static const FunctionList kFunctions = {
        {"DEC2BIN", "v|v", ChangeNotation<10, 2>},
        {"DEC2OCT", "v|v", ChangeNotation<10, 8>},
        {"DEC2HEX", "v|v", ChangeNotation<10, 16>},
        {"BIN2DEC", "v", ChangeNotation<2, 10>},
        {"BIN2OCT", "v|v", ChangeNotation<2, 8>},
        {"BIN2HEX", "v|v", ChangeNotation<2, 16>},
        {"OCT2DEC", "v", ChangeNotation<8, 10>},
        {"OCT2BIN", "v|v", ChangeNotation<8, 2>},
        {"OCT2HEX", "v|v", ChangeNotation<8, 16>},
        {"HEX2DEC", "v", ChangeNotation<16, 10>},
        {"HEX2BIN", "v|v", ChangeNotation<16, 2>},
        {"HEX2OCT", "v|v", ChangeNotation<16, 8>},
        {"BASE", "vv|v", Base},
        {"DECIMAL", "vv", Decimal},
        {"ROMAN", "v|v", Roman},
        {"ARABIC", "v", Arabic},
    };
    return kFunctions;
}

} // namespace orrery::formula
