#include "engines/builtin/xlsx/look/drawing/geometry/guides.h"

#include "util/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

namespace orrery::xlsx::drawing {
namespace {

constexpr double kFullCircle = 21'600'000; // ST_Angle
constexpr double kRadian = kFullCircle / 2 / std::numbers::pi;
constexpr double kLargest = 1e15;

using Operands = std::array<double, 3>;

double Finite(double value)
{
    return std::isfinite(value) ? std::clamp(value, -kLargest, kLargest) : 0;
}

struct Operation {
    std::string_view name;
    double (*compute)(const Operands& values);
};

/// ECMA-376 20.1.9.11; angles count from the x axis towards the y axis.
constexpr auto kOperations = std::to_array<Operation>({
    {"val", [](const Operands& v) { return v[0]; }},
    {"*/", [](const Operands& v) { return v[0] * v[1] / v[2]; }},
    {"+-", [](const Operands& v) { return v[0] + v[1] - v[2]; }},
    {"+/", [](const Operands& v) { return (v[0] + v[1]) / v[2]; }},
    {"?:", [](const Operands& v) { return v[0] > 0 ? v[1] : v[2]; }},
    {"abs", [](const Operands& v) { return std::abs(v[0]); }},
    {"at2", [](const Operands& v) { return std::atan2(v[1], v[0]) * kRadian; }},
    {"cat2", [](const Operands& v) { return v[0] * std::cos(std::atan2(v[2], v[1])); }},
    {"cos", [](const Operands& v) { return v[0] * std::cos(v[1] / kRadian); }},
    {"max", [](const Operands& v) { return std::max(v[0], v[1]); }},
    {"min", [](const Operands& v) { return std::min(v[0], v[1]); }},
    {"mod", [](const Operands& v) { return std::hypot(v[0], v[1], v[2]); }},
    {"pin", [](const Operands& v) { return std::max(v[0], std::min(v[1], v[2])); }},
    {"sat2", [](const Operands& v) { return v[0] * std::sin(std::atan2(v[2], v[1])); }},
    {"sin", [](const Operands& v) { return v[0] * std::sin(v[1] / kRadian); }},
    {"sqrt", [](const Operands& v) { return std::sqrt(v[0]); }},
    {"tan", [](const Operands& v) { return v[0] * std::tan(v[1] / kRadian); }},
});

/// Takes the next word of a formula.
std::string_view TakeWord(std::string_view& text)
{
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    const std::string_view word = text.substr(begin, end - begin);
    text.remove_prefix(end);
    return word;
}

/// Of "wd4" with "wd" the 4.
std::optional<double> Divisor(std::string_view name, std::string_view prefix)
{
    if (!name.starts_with(prefix))
        return std::nullopt;
    const auto number = util::ReadNumber(name.substr(prefix.size()));
    return number && *number > 0 ? number : std::nullopt;
}

} // namespace

void Guides::Add(const xml::Element& list)
{
    for (const xml::Element guide : list) {
        if (values_.size() >= kMaxGuides)
            return;
        if (guide.Name() == "gd")
            values_.insert_or_assign(guide.Attribute("name"), Compute(guide.Attribute("fmla")));
    }
}

double Guides::Compute(std::string_view formula) const
{
    const std::string_view name = TakeWord(formula);
    const auto operation =
        std::find_if(kOperations.begin(), kOperations.end(),
                     [name](const Operation& each) { return each.name == name; });
    if (operation == kOperations.end())
        return 0;
    Operands operands{};
    for (double& operand : operands)
        operand = Value(TakeWord(formula));
    return Finite(operation->compute(operands));
}

double Guides::Value(std::string_view text) const
{
    if (const auto number = util::ReadNumber(text))
        return Finite(*number);
    const auto found = values_.find(text);
    return found != values_.end() ? found->second : Finite(ValueOfSize(text));
}

/// ECMA-376 20.1.9.11 and 20.1.10.56: the sides, middles and parts of the shape, and of a circle.
double Guides::ValueOfSize(std::string_view name) const
{
    const double shorter = std::min(width_, height_);
    if (name == "w" || name == "r")
        return width_;
    if (name == "h" || name == "b")
        return height_;
    if (name == "hc")
        return width_ / 2;
    if (name == "vc")
        return height_ / 2;
    if (name == "ss")
        return shorter;
    if (name == "ls")
        return std::max(width_, height_);
    if (const auto parts = Divisor(name, "wd"))
        return width_ / *parts;
    if (const auto parts = Divisor(name, "hd"))
        return height_ / *parts;
    if (const auto parts = Divisor(name, "ssd"))
        return shorter / *parts;
    const std::size_t at = std::min(name.find("cd"), name.size());
    const auto parts = Divisor(name.substr(at), "cd");
    const double times = at == 0 ? 1 : util::ReadNumber(name.substr(0, at)).value_or(0);
    return parts ? times * kFullCircle / *parts : 0;
}

} // namespace orrery::xlsx::drawing
