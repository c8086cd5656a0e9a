#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"

#include "util/numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace orrery::xlsx::drawing {
namespace {

constexpr double kLargestNumber = 1e15;
constexpr double kLargestEmu = 36e9; // a kilometre

std::optional<double> FiniteNumber(std::string_view text)
{
    const auto number = util::ReadNumber(text);
    if (!number || !(std::abs(*number) < kLargestNumber))
        return std::nullopt;
    return number;
}

/// The EMU of a unit of ST_UniversalMeasure, or 0.
double EmuOfUnit(std::string_view unit)
{
    constexpr double kInch = 914400;
    if (unit == "in")
        return kInch;
    if (unit == "cm")
        return kInch / 2.54;
    if (unit == "mm")
        return kInch / 25.4;
    if (unit == "pt")
        return kInch / 72;
    return unit == "pc" || unit == "pi" ? kInch / 6 : 0;
}

} // namespace

std::optional<double> NumberOf(const xml::Element& element, std::string_view attribute)
{
    return FiniteNumber(element.Attribute(attribute));
}

std::optional<double> NumberOf(const xml::Element& element, std::string_view attribute, double low,
                               double high)
{
    const auto number = NumberOf(element, attribute);
    return number ? std::optional(std::clamp(*number, low, high)) : std::nullopt;
}

std::optional<double> ShareOf(const xml::Element& element, std::string_view attribute)
{
    const std::string text = element.Attribute(attribute);
    const bool isPercent = text.ends_with('%');
    const auto number = FiniteNumber(std::string_view(text).substr(0, text.size() - isPercent));
    return number ? std::optional(*number / (isPercent ? 100 : 100000)) : std::nullopt;
}

std::int64_t EmuOf(const xml::Element& element, std::string_view attribute, std::int64_t otherwise)
{
    return EmuOfText(element.Attribute(attribute), otherwise);
}

std::int64_t EmuOfText(std::string_view text, std::int64_t otherwise)
{
    auto number = FiniteNumber(text);
    if (!number && text.size() > 2) {
        const std::size_t length = text.size() - 2;
        number = FiniteNumber(text.substr(0, length));
        const double unit = EmuOfUnit(text.substr(length));
        number = number && unit != 0 ? std::optional(*number * unit) : std::nullopt;
    }
    if (!number)
        return otherwise;
    return std::llround(std::clamp(*number, -kLargestEmu, kLargestEmu));
}

double DegreesOf(const xml::Element& element, std::string_view attribute)
{
    return std::fmod(NumberOf(element, attribute).value_or(0) / 60000, 360);
}

double ValueOfFormula(std::string_view formula)
{
    constexpr std::string_view kValue = "val ";
    if (!formula.starts_with(kValue))
        return std::numeric_limits<double>::quiet_NaN();
    return FiniteNumber(formula.substr(kValue.size()))
        .value_or(std::numeric_limits<double>::quiet_NaN());
}

bool FlagOf(const xml::Element& element, std::string_view attribute, bool otherwise)
{
    const std::string text = element.Attribute(attribute);
    if (text == "1" || text == "true" || text == "on")
        return true;
    return text.empty() ? otherwise : false;
}

} // namespace orrery::xlsx::drawing
