#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace orrery::look {

/// Fonts that are free and whose widths the program knows. The first six are as wide as Calibri,
/// Cambria, Arial, Arial Narrow, Times New Roman and Courier New.
enum class OpenFont : std::uint8_t {
    Carlito,
    Caladea,
    LiberationSans,
    LiberationSansNarrow,
    LiberationSerif,
    LiberationMono,
    DejaVuSans,
    DejaVuSerif,
    DejaVuSansMono
};

enum class FontKind : std::uint8_t { Sans, Serif, Mono, Script };

struct FontMatch {
    OpenFont font = OpenFont::DejaVuSans;
    FontKind kind = FontKind::Sans;
    bool isEastAsian = false; ///< has wide characters of its own
};

/// The open font that comes nearest to a font; names are compared without case, and "@" before a
/// name (vertical writing) does not count. An unknown font is a sans one.
FontMatch MatchFont(std::string_view name);

std::string_view OpenFontName(OpenFont font);

/// The families to try, for CSS and SVG: the font itself, its substitute, the generic family
/// ("Calibri, Carlito, sans-serif"). What could end the list or a quoted name is left out of a
/// damaged name.
std::string FontFamilies(std::string_view name);

} // namespace orrery::look
