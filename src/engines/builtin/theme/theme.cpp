#include "engines/builtin/theme/theme.h"

#include "engines/builtin/xml/reading.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace orrery::builtin {
namespace {

constexpr std::array<std::string_view, 12> kNames = {"lt1",     "dk1",     "lt2",     "dk2",
                                                     "accent1", "accent2", "accent3", "accent4",
                                                     "accent5", "accent6", "hlink",   "folHlink"};

/// Drawings call the first four by what they are for.
constexpr std::array<std::string_view, 4> kUses = {"bg1", "tx1", "bg2", "tx2"};

book::Color FromNumber(std::uint32_t rgb)
{
    return {static_cast<std::uint8_t>(rgb >> 16U & 0xFFU),
            static_cast<std::uint8_t>(rgb >> 8U & 0xFFU), static_cast<std::uint8_t>(rgb & 0xFFU)};
}

/// The colour element inside an element of the colour scheme. A system's colour is what it was when
/// the file was saved.
std::optional<book::Color> ReadSchemeColor(const xml::Scanner& scanner)
{
    const std::string_view name = scanner.LocalName();
    if (name == "srgbClr")
        return ParseHexColor(scanner.AttributeText("val").value_or(""));
    if (name != "sysClr")
        return std::nullopt;
    if (const auto last = ParseHexColor(scanner.AttributeText("lastClr").value_or("")))
        return last;
    const std::string use = scanner.AttributeText("val").value_or("");
    return use.ends_with("Text") ? book::kBlack : book::kWhite;
}

void ReadColorScheme(xml::Scanner& scanner, ThemeColors& theme)
{
    xml::ForEachChild(scanner, [&] {
        const auto place = std::find(kNames.begin(), kNames.end(), scanner.LocalName());
        if (place == kNames.end())
            return scanner.SkipElement();
        xml::ForEachChild(scanner, [&] {
            if (const auto color = ReadSchemeColor(scanner))
                theme.colors[static_cast<std::size_t>(place - kNames.begin())] = *color;
            scanner.SkipElement();
        });
    });
}

void ReadThemeFont(xml::Scanner& scanner, ThemeColors& theme, std::string& font)
{
    constexpr std::size_t kMaxFonts = 256;
    xml::ForEachChild(scanner, [&] {
        auto name = scanner.AttributeText("typeface");
        if (name && !name->empty()) {
            if (scanner.LocalName() == "latin")
                font = std::move(*name);
            else if (theme.scriptFonts.size() < kMaxFonts)
                theme.scriptFonts.insert(std::move(*name));
        }
        scanner.SkipElement();
    });
}

void ReadFontScheme(xml::Scanner& scanner, ThemeColors& theme)
{
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "majorFont")
            return ReadThemeFont(scanner, theme, theme.majorFont);
        if (scanner.LocalName() == "minorFont")
            return ReadThemeFont(scanner, theme, theme.minorFont);
        scanner.SkipElement();
    });
}

void ReadThemeElements(xml::Scanner& scanner, ThemeColors& theme)
{
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "clrScheme")
            return ReadColorScheme(scanner, theme);
        if (scanner.LocalName() == "fontScheme")
            return ReadFontScheme(scanner, theme);
        scanner.SkipElement();
    });
}

} // namespace

ThemeColors::ThemeColors()
    : colors{FromNumber(0xFFFFFF), FromNumber(0x000000), FromNumber(0xEEECE1),
             FromNumber(0x1F497D), FromNumber(0x4F81BD), FromNumber(0xC0504D),
             FromNumber(0x9BBB59), FromNumber(0x8064A2), FromNumber(0x4BACC6),
             FromNumber(0xF79646), FromNumber(0x0000FF), FromNumber(0x800080)},
      majorFont("Cambria"), minorFont("Calibri")
{
}

std::optional<book::Color> ThemeColors::ByIndex(std::size_t index) const
{
    return index < colors.size() ? std::optional(colors[index]) : std::nullopt;
}

std::optional<book::Color> ThemeColors::ByName(std::string_view name) const
{
    const auto found = std::find(kNames.begin(), kNames.end(), name);
    if (found != kNames.end())
        return colors[static_cast<std::size_t>(found - kNames.begin())];
    const auto use = std::find(kUses.begin(), kUses.end(), name);
    return use == kUses.end() ? std::nullopt
                              : ByIndex(static_cast<std::size_t>(use - kUses.begin()));
}

const std::string* ThemeColors::FontOf(std::string_view scheme) const
{
    if (scheme == "major" || scheme == "+mj-lt")
        return &majorFont;
    return scheme == "minor" || scheme == "+mn-lt" ? &minorFont : nullptr;
}

const std::string& ThemeColors::FontFor(std::string_view scheme, const std::string& name) const
{
    const std::string* font = FontOf(scheme);
    return font == nullptr || scriptFonts.contains(name) ? name : *font;
}

ThemeColors ParseTheme(std::string_view xml)
{
    ThemeColors theme;
    xml::Scanner scanner(xml);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "themeElements")
            return ReadThemeElements(scanner, theme);
        scanner.SkipElement();
    });
    return theme;
}

std::optional<book::Color> ParseHexColor(std::string_view text)
{
    if (text.size() == 8)
        text.remove_prefix(2);
    std::uint32_t rgb = 0;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(text.data(), end, rgb, 16);
    if (text.size() != 6 || error != std::errc() || behind != end)
        return std::nullopt;
    return FromNumber(rgb);
}

} // namespace orrery::builtin
