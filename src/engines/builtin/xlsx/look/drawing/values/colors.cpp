#include "engines/builtin/xlsx/look/drawing/values/colors.h"

#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace orrery::xlsx::drawing {
namespace {

/// Channels in [0:1], with the gamma of sRGB.
struct Channels {
    double red = 0;
    double green = 0;
    double blue = 0;
};

/// Hue in [0:1), saturation and luminance in [0:1].
struct HueColor {
    double hue = 0;
    double saturation = 0;
    double luminance = 0;
};

std::uint8_t ByteOfShare(double share)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(share, 0.0, 1.0) * 255));
}

book::Color ToColor(const Channels& channels)
{
    return {ByteOfShare(channels.red), ByteOfShare(channels.green), ByteOfShare(channels.blue)};
}

Channels ToChannels(book::Color color)
{
    return {color.red / 255.0, color.green / 255.0, color.blue / 255.0};
}

HueColor ToHue(const Channels& channels)
{
    const auto [red, green, blue] = channels;
    const double high = std::max({red, green, blue});
    const double low = std::min({red, green, blue});
    const double range = high - low;
    HueColor result{0, 0, (high + low) / 2};
    if (range <= 0)
        return result;
    result.saturation = range / (1 - std::abs(2 * result.luminance - 1));
    if (high == red)
        result.hue = (green - blue) / range;
    else if (high == green)
        result.hue = (blue - red) / range + 2;
    else
        result.hue = (red - green) / range + 4;
    result.hue /= 6;
    result.hue -= std::floor(result.hue);
    return result;
}

Channels ToChannels(const HueColor& color)
{
    const double hue = color.hue - std::floor(color.hue);
    const double luminance = std::clamp(color.luminance, 0.0, 1.0);
    const double range = std::clamp(color.saturation, 0.0, 1.0) * (1 - std::abs(2 * luminance - 1));
    const auto channel = [&](double shift) {
        double at = hue + shift;
        at -= std::floor(at);
        const double rise = std::clamp(std::abs(at * 6 - 3) - 1, 0.0, 1.0);
        return luminance + range * (rise - 0.5);
    };
    return {channel(0), channel(-1.0 / 3), channel(1.0 / 3)};
}

double ToLinear(double share)
{
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double FromLinear(double share)
{
    share = std::clamp(share, 0.0, 1.0);
    return share <= 0.0031308 ? share * 12.92 : 1.055 * std::pow(share, 1 / 2.4) - 0.055;
}

template <typename Change> Channels ChangeLinear(const Channels& channels, Change change)
{
    return {FromLinear(change(ToLinear(channels.red))),
            FromLinear(change(ToLinear(channels.green))),
            FromLinear(change(ToLinear(channels.blue)))};
}

/// The transformations "hueMod", "satOff", "lum" ... of hue, saturation and luminance.
bool TransformHue(std::string_view name, double share, double degrees, HueColor& color)
{
    const std::string_view part = name.substr(0, 3);
    const std::string_view how = name.substr(std::min<std::size_t>(3, name.size()));
    double* value = part == "hue"   ? &color.hue
                    : part == "sat" ? &color.saturation
                    : part == "lum" ? &color.luminance
                                    : nullptr;
    if (value == nullptr || !(how.empty() || how == "Mod" || how == "Off"))
        return false;
    if (how == "Mod")
        *value *= share;
    else if (how == "Off")
        *value += part == "hue" ? degrees / 360 : share;
    else
        *value = part == "hue" ? degrees / 360 : share;
    if (part != "hue")
        *value = std::clamp(*value, 0.0, 1.0);
    return true;
}

/// "redMod", "green", "blueOff" ..., in linear light.
bool TransformChannel(std::string_view name, double share, Channels& channels)
{
    double* value = name.starts_with("red")     ? &channels.red
                    : name.starts_with("green") ? &channels.green
                    : name.starts_with("blue")  ? &channels.blue
                                                : nullptr;
    if (value == nullptr)
        return false;
    const double before = ToLinear(*value);
    *value = FromLinear(name.ends_with("Mod")   ? before * share
                        : name.ends_with("Off") ? before + share
                                                : share);
    return true;
}

bool TransformOpacity(std::string_view name, double share, double& opacity)
{
    if (name == "alpha")
        opacity = share;
    else if (name == "alphaMod")
        opacity *= share;
    else if (name == "alphaOff")
        opacity += share;
    else
        return false;
    opacity = std::clamp(opacity, 0.0, 1.0);
    return true;
}

/// ECMA-376 20.1.2.3: shades and tints mix with black and white in linear light.
void TransformWhole(std::string_view name, double share, Channels& channels)
{
    share = std::clamp(share, 0.0, 1.0);
    if (name == "shade")
        channels = ChangeLinear(channels, [&](double value) { return value * share; });
    else if (name == "tint")
        channels = ChangeLinear(channels, [&](double value) { return 1 - (1 - value) * share; });
    else if (name == "inv")
        channels = ChangeLinear(channels, [](double value) { return 1 - value; });
    else if (name == "gray") {
        const double gray = 0.3 * channels.red + 0.59 * channels.green + 0.11 * channels.blue;
        channels = {gray, gray, gray};
    }
    else if (name == "comp") {
        HueColor color = ToHue(channels);
        color.hue += 0.5;
        channels = ToChannels(color);
    }
}

void Transform(const xml::Element& change, Channels& channels, double& opacity)
{
    const std::string_view name = change.Name();
    const double share = ShareOf(change, "val").value_or(1);
    if (TransformOpacity(name, share, opacity) || TransformChannel(name, share, channels))
        return;
    HueColor color = ToHue(channels);
    if (TransformHue(name, share, DegreesOf(change, "val"), color))
        channels = ToChannels(color);
    else
        TransformWhole(name, share, channels);
}

std::optional<Channels> HexColor(std::string_view text)
{
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    if (text.size() != 6 || error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return ToChannels(book::Color{static_cast<std::uint8_t>(number >> 16U),
                                  static_cast<std::uint8_t>(number >> 8U & 0xFFU),
                                  static_cast<std::uint8_t>(number & 0xFFU)});
}

/// What a system colour is where the file does not say how it was last seen.
std::optional<Channels> SystemColor(const xml::Element& element)
{
    if (const auto last = HexColor(element.Attribute("lastClr")))
        return last;
    const std::string name = element.Attribute("val");
    const bool isDark = name.ends_with("Text") || name == "windowFrame";
    return ToChannels(isDark ? book::kBlack : book::kWhite);
}

std::optional<ShapeColor> SchemeColor(const std::string& name, const ColorSource& source)
{
    if (name == "phClr")
        return source.placeholder;
    const auto color = source.theme.ByName(name);
    return color ? std::optional(ShapeColor{*color, 1}) : std::nullopt;
}

std::optional<Channels> PlainColor(const xml::Element& element)
{
    const std::string_view name = element.Name();
    const auto share = [&](const char* attribute) {
        return std::clamp(ShareOf(element, attribute).value_or(0), 0.0, 1.0);
    };
    if (name == "srgbClr")
        return HexColor(element.Attribute("val"));
    if (name == "sysClr")
        return SystemColor(element);
    if (name == "scrgbClr")
        return Channels{FromLinear(share("r")), FromLinear(share("g")), FromLinear(share("b"))};
    if (name == "hslClr")
        return ToChannels(HueColor{DegreesOf(element, "hue") / 360, share("sat"), share("lum")});
    if (name == "prstClr") {
        const auto color = PresetColor(element.Attribute("val"));
        return color ? std::optional(ToChannels(*color)) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace

std::optional<ShapeColor> ReadColor(const xml::Element& parent, const ColorSource& source)
{
    for (const xml::Element element : parent) {
        double opacity = 1;
        auto channels = PlainColor(element);
        if (element.Name() == "schemeClr") {
            if (const auto color = SchemeColor(element.Attribute("val"), source)) {
                channels = ToChannels(color->color);
                opacity = color->opacity;
            }
        }
        if (!channels)
            continue;
        for (const xml::Element change : element)
            Transform(change, *channels, opacity);
        return ShapeColor{ToColor(*channels), opacity};
    }
    return std::nullopt;
}

book::Color ChangeLuminance(book::Color color, double change)
{
    HueColor hue = ToHue(ToChannels(color));
    hue.luminance += change < 0 ? hue.luminance * change : (1 - hue.luminance) * change;
    return ToColor(ToChannels(hue));
}

} // namespace orrery::xlsx::drawing
