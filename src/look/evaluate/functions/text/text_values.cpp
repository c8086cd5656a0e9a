#include "look/evaluate/functions/text/text.h"

#include "look/evaluate/values/decimals.h"
#include "util/text.h"

#include <algorithm>
#include <cmath>

namespace orrery::formula {
namespace {

/// Digits with so many decimals, and perhaps commas between thousands. Negative decimals round
/// before the point.
std::string FixedText(double number, double decimals, bool hasCommas)
{
    const double rounded = RoundDecimals(std::fabs(number), decimals, Rounding::Nearest);
    const int places = static_cast<int>(std::max(decimals, 0.0));
    std::string digits = GeneralText(rounded);
    if (const auto mark = digits.find('E'); mark != std::string::npos)
        return digits;
    const std::size_t point = std::min(digits.find('.'), digits.size());
    std::string fraction = point < digits.size() ? digits.substr(point + 1) : "";
    fraction.resize(static_cast<std::size_t>(places), '0');
    digits.resize(point);
    for (std::size_t at = digits.size(); hasCommas && at > 3;)
        digits.insert(at -= 3, ",");
    return digits + (places > 0 ? "." + fraction : "");
}

Value Fixed(Call& call)
{
    const double number = call.Number(0);
    const double decimals = std::trunc(call.Number(1, 2));
    if (std::fabs(decimals) > 127)
        return CellError::Value;
    const std::string text = FixedText(number, decimals, !call.Logical(2));
    return (number < 0 && text.find_first_of("123456789") != std::string::npos ? "-" : "") + text;
}

Value Dollar(Call& call)
{
    const double number = call.Number(0);
    const double decimals = std::trunc(call.Number(1, 2));
    if (std::fabs(decimals) > 127)
        return CellError::Value;
    const std::string text = "$" + FixedText(number, decimals, true);
    return number < 0 ? "(" + text + ")" : text;
}

/// TEXT: a value as a number format shows it.
Value TextOf(Call& call)
{
    Value value = call.Single(0);
    const std::string code = call.Text(1);
    if (call.failure || IsError(value))
        return value;
    const auto formatted = call.context.Format(value, code);
    if (formatted.error)
        call.Fail(*formatted.error);
    return formatted.value;
}

Value ValueOf(Call& call)
{
    if (std::holds_alternative<bool>(call.Single(0)))
        return CellError::Value;
    return call.Number(0);
}

Value OnlyText(Call& call)
{
    const Value value = call.Single(0);
    return std::holds_alternative<std::string>(value) || IsError(value) ? value
                                                                        : Value(std::string());
}

Value NumberValue(Call& call)
{
    const std::string text = call.Text(0);
    const std::string point = call.Text(1, ".").substr(0, 1);
    const std::string group = call.Text(2, ",").substr(0, 1);
    std::string plain;
    for (const char byte : text) {
        if (byte == ' ' || group.find(byte) != std::string::npos)
            continue;
        plain += point.find(byte) != std::string::npos ? '.' : byte;
    }
    if (plain.empty())
        return 0.0;
    const auto number = NumberOfText(plain, call.context.Rules());
    return number ? Value(*number) : Value(CellError::Value);
}

} // namespace

const FunctionList& TextValueFunctions()
{
    static const FunctionList kFunctions = {
        {"FIXED", "v|vv", Fixed},
        {"DOLLAR", "v|v", Dollar},
        {"USDOLLAR", "v|v", Dollar},
        {"TEXT", "vv", TextOf},
        {"VALUE", "v", ValueOf},
        {"T", "r", OnlyText},
        {"NUMBERVALUE", "v|vv", NumberValue},
        {"HYPERLINK", "v|v", [](Call& call) -> Value { return call.Single(call.Has(1) ? 1 : 0); }},
    };
    return kFunctions;
}

} // namespace orrery::formula
