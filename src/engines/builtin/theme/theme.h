#pragma once

#include "book/look/color.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace orrery::builtin {

/// The colours and fonts that a workbook's theme names. ECMA-376 20.1.6
struct ThemeColors {
    /// In the order of the styles' indexes: lt1, dk1, lt2, dk2, accent1 to accent6, hlink,
    /// folHlink.
    std::array<book::Color, 12> colors;
    std::string majorFont; ///< for Latin texts
    std::string minorFont;
    std::set<std::string, std::less<>> scriptFonts; ///< for other scripts than Latin

    /// The colours and fonts for workbooks without a theme.
    ThemeColors();
    /// By the styles' index; nothing beyond them.
    std::optional<book::Color> ByIndex(std::size_t index) const;
    /// By the name that drawings use: "accent1", "lt1", "bg1", "tx2", "hlink"; nothing for others.
    std::optional<book::Color> ByName(std::string_view name) const;
    /// The font of a scheme: "major", "minor", "+mj-lt", "+mn-lt"; nullptr for others.
    const std::string* FontOf(std::string_view scheme) const;
    /// The font of a style with a scheme ("major", "minor") and a name: that of the theme, unless
    /// the name is the theme's for another script, as in files of East Asian users.
    const std::string& FontFor(std::string_view scheme, const std::string& name) const;
};

/// The theme from the text of its part. What is missing or damaged is as in a workbook without a
/// theme; throws util::Error where the text is no XML.
ThemeColors ParseTheme(std::string_view xml);

/// "1F497D", or "FF1F497D" with an opacity that does not count; nothing for other texts.
std::optional<book::Color> ParseHexColor(std::string_view text);

} // namespace orrery::builtin
