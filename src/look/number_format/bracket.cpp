// What stands in the brackets of a section.

#include "look/number_format/format_code.h"
#include "look/number_format/locale_names.h"
#include "util/text.h"

#include <array>
#include <charconv>
#include <utility>

namespace orrery::look {
namespace {

constexpr book::Color FromRgb(std::uint32_t rgb)
{
    return {static_cast<std::uint8_t>(rgb >> 16U), static_cast<std::uint8_t>(rgb >> 8U),
            static_cast<std::uint8_t>(rgb)};
}

/// The colours 1 to 56 of the default palette, [MS-XLS] 2.5.161.
constexpr std::array<std::uint32_t, 56> kPalette{
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF,
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

/// The names of the first colours, in the palette's order.
constexpr std::array<std::string_view, 8> kColorNames{"black", "white",  "red",     "green",
                                                      "blue",  "yellow", "magenta", "cyan"};

template <typename Number> std::optional<Number> ReadWhole(std::string_view text, int base = 10)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

std::optional<book::Color> ReadColor(std::string_view text)
{
    for (std::size_t i = 0; i < kColorNames.size(); ++i) {
        if (util::EqualIgnoringCase(text, kColorNames[i])) {
            return FromRgb(kPalette[i]);
        }
    }
    constexpr std::string_view kColor = "color";
    if (!util::EqualIgnoringCase(text.substr(0, kColor.size()), kColor)) {
        return std::nullopt;
    }
    const auto number = ReadWhole<unsigned>(util::Trim(text.substr(kColor.size())));
    if (!number || *number < 1 || *number > kPalette.size()) {
        return std::nullopt;
    }
    return FromRgb(kPalette[*number - 1]);
}

std::optional<SectionCondition> ReadCondition(std::string_view text)
{
    constexpr std::array<std::pair<std::string_view, Comparison>, 6> kSigns{
        {{"<=", Comparison::LessOrEqual},
         {">=", Comparison::GreaterOrEqual},
         {"<>", Comparison::NotEqual},
         {"<", Comparison::Less},
         {">", Comparison::Greater},
         {"=", Comparison::Equal}}};
    for (const auto& [sign, comparison] : kSigns) {
        if (text.substr(0, sign.size()) != sign) {
            continue;
        }
        auto limit = util::Trim(text.substr(sign.size()));
        limit.remove_prefix(limit.substr(0, 1) == "+" ? 1 : 0);
        SectionCondition condition{comparison, 0};
        const auto [end, error] =
            std::from_chars(limit.data(), limit.data() + limit.size(), condition.limit);
        if (error != std::errc() || end != limit.data() + limit.size()) {
            return std::nullopt;
        }
        return condition;
    }
    return std::nullopt;
}

/// "h", "mm", "sss"
bool ReadElapsed(std::string_view text, Section& section)
{
    constexpr std::array<std::pair<std::string_view, TokenKind>, 3> kUnits{
        {{"hH", TokenKind::ElapsedHours},
         {"mM", TokenKind::ElapsedMinutes},
         {"sS", TokenKind::ElapsedSeconds}}};
    for (const auto& [letters, kind] : kUnits) {
        if (!text.empty() && text.find_first_not_of(letters) == std::string_view::npos) {
            section.tokens.push_back({kind, 0, text.size(), {}});
            return true;
        }
    }
    return false;
}

/// A Windows locale identifier in hexadecimal digits with a calendar and numerals before it, or a
/// language tag.
void ReadLocale(std::string_view text, SectionLocale& locale)
{
    constexpr std::uint32_t kSystemDate = 0xF800;
    constexpr std::uint32_t kSystemTime = 0xF400;
    const auto number = ReadWhole<std::uint32_t>(text, 16);
    const std::uint32_t language = number ? *number & 0xFFFFU : 0;
    locale.isSystemDate = language == kSystemDate || util::EqualIgnoringCase(text, "x-sysdate");
    locale.isSystemTime = language == kSystemTime || util::EqualIgnoringCase(text, "x-systime");
    if (locale.isSystemDate || locale.isSystemTime) {
        return;
    }
    locale.language = number ? static_cast<std::uint16_t>(language) : LanguageOfTag(text);
    locale.calendar = number ? static_cast<std::uint8_t>(*number >> 16U) : 0;
    locale.numerals = number ? static_cast<std::uint8_t>(*number >> 24U) : 0;
}

/// "$€-407": what is shown, and a locale.
void ReadCurrency(std::string_view text, Section& section)
{
    const auto dash = text.find('-');
    const auto symbol = text.substr(0, dash);
    if (!symbol.empty()) {
        section.tokens.push_back({TokenKind::Literal, 0, 1, std::string(symbol)});
    }
    if (dash != std::string_view::npos) {
        ReadLocale(text.substr(dash + 1), section.locale);
    }
}

} // namespace

void ReadBracket(std::string_view text, Section& section)
{
    constexpr std::string_view kIdeographs = "DBNum";
    if (text.substr(0, 1) == "$") {
        ReadCurrency(text.substr(1), section);
    }
    else if (ReadElapsed(text, section)) {
        return;
    }
    else if (util::EqualIgnoringCase(text.substr(0, kIdeographs.size()), kIdeographs)) {
        section.locale.ideographs =
            ReadWhole<std::uint8_t>(text.substr(kIdeographs.size())).value_or(0);
    }
    else if (const auto color = ReadColor(text)) {
        section.color = color;
    }
    else if (const auto condition = ReadCondition(text)) {
        section.condition = condition;
    }
}

} // namespace orrery::look
