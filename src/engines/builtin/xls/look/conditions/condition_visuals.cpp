#include "engines/builtin/xls/look/conditions/condition_visuals.h"

#include "util/numbers.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orrery::xls {
namespace {

using book::ScalePoint;

/// In the order of [MS-XLS] 2.5.36 (iIconSet); the names are those of ECMA-376 18.18.42.
constexpr std::array<std::string_view, 17> kIconSets = {
    "3Arrows",        "3ArrowsGray", "3Flags",      "3TrafficLights1", "3TrafficLights2", "3Signs",
    "3Symbols",       "3Symbols2",   "4Arrows",     "4ArrowsGray",     "4RedToBlack",     "4Rating",
    "4TrafficLights", "5Arrows",     "5ArrowsGray", "5Rating",         "5Quarters"};

ScalePoint::Kind KindOf(std::uint8_t value)
{
    using enum ScalePoint::Kind;
    switch (value) {
    case 2:
        return Minimum;
    case 3:
        return Maximum;
    case 4:
        return Percent;
    case 5:
        return Percentile;
    case 7:
        return Formula;
    default:
        return Number;
    }
}

/// [MS-XLS] 2.5.39 (CFVO)
ScalePoint ReadPoint(ByteCursor& cursor, const ConditionContext& context)
{
    ScalePoint point;
    point.kind = KindOf(cursor.U8());
    const std::size_t size = cursor.U16();
    const bool hasNoValue =
        point.kind == ScalePoint::Kind::Minimum || point.kind == ScalePoint::Kind::Maximum;
    if (size > 0) {
        auto text = FormulaText(cursor.Take(size), {}, context.formulas);
        if (!text)
            ThrowDamaged("the formula of a bound cannot be read");
        point.value = std::move(*text);
    }
    else if (!hasNoValue) {
        point.value = util::ShortestText(cursor.Double());
    }
    return point;
}

/// [MS-XLS] 2.5.21 (CFColor)
book::Color ReadColor(ByteCursor& cursor, const LookColors& colors)
{
    FullColor color;
    color.kind = cursor.U32();
    color.value = cursor.U32();
    color.tint = cursor.Double();
    return colors.Full(color, ColorUse::Background).value_or(book::kWhite);
}

} // namespace

std::vector<ScalePoint> ReadColorScale(ByteCursor cursor, const ConditionContext& context)
{
    constexpr std::size_t kMost = 3;
    cursor.Skip(3);
    const std::size_t points = cursor.U8();
    const std::size_t colors = cursor.U8();
    cursor.Skip(1);
    if (points != colors || points < 2 || points > kMost)
        ThrowDamaged("a colour scale does not have two or three colours");
    std::vector<ScalePoint> scale;
    for (std::size_t i = 0; i < points; ++i) {
        scale.push_back(ReadPoint(cursor, context));
        cursor.Skip(8); // its share of the scale
    }
    for (auto& point : scale) {
        cursor.Skip(8);
        point.color = ReadColor(cursor, context.colors);
    }
    return scale;
}

/// The values of the cells stay visible: Excel leaves the flag for that clear where it shows them.
book::DataBar ReadDataBar(ByteCursor cursor, const ConditionContext& context)
{
    constexpr int kWhole = 100;
    book::DataBar bar;
    cursor.Skip(3);
    bar.isRightToLeft = (cursor.U8() & 1U) != 0;
    bar.minimumLength = std::min<int>(cursor.U8(), kWhole);
    bar.maximumLength = std::min<int>(cursor.U8(), kWhole);
    bar.color = ReadColor(cursor, context.colors);
    bar.minimum = ReadPoint(cursor, context);
    bar.maximum = ReadPoint(cursor, context);
    return bar;
}

book::IconSet ReadIconSet(ByteCursor cursor, const ConditionContext& context)
{
    constexpr std::uint8_t kIconOnly = 0x01;
    constexpr std::uint8_t kReversed = 0x04;
    book::IconSet icons;
    cursor.Skip(3);
    const std::size_t states = cursor.U8();
    const std::size_t set = cursor.U8();
    const auto flags = cursor.U8();
    if (set >= kIconSets.size() || states != static_cast<std::size_t>(kIconSets[set][0] - '0'))
        ThrowDamaged("an icon set is unknown");
    icons.name = kIconSets[set];
    icons.showsValue = (flags & kIconOnly) == 0;
    icons.isReversed = (flags & kReversed) != 0;
    for (std::size_t i = 0; i < states; ++i) {
        auto point = ReadPoint(cursor, context);
        point.isGreaterOrEqual = cursor.U8() != 0;
        cursor.Skip(4);
        icons.points.push_back(std::move(point));
    }
    return icons;
}

} // namespace orrery::xls
