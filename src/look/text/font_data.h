#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

/// Widths of open fonts, written by make_font_data.py when the program is built.
namespace orrery::look {

/// Characters that follow each other, and where their widths begin.
struct FontRun {
    std::uint16_t first;
    std::uint16_t count;
    std::uint16_t offset;
};

/// Lengths are in units of which an em has `unitsPerEm`.
struct FontFace {
    std::uint16_t unitsPerEm;
    std::int16_t ascent;
    std::int16_t descent;          ///< below the baseline, positive
    std::uint16_t top;             ///< of the highest characters, above the baseline
    std::uint16_t bottom;          ///< of the lowest ones, below it
    std::span<const FontRun> runs; ///< rising; the first begins with the blank
    std::span<const std::uint16_t> widths;
};

struct FontFamily {
    std::array<const FontFace*, 4> styles; ///< regular, bold, italic, both
};

/// In the order of `OpenFont`.
extern const std::array<FontFamily, 9> kFontFamilies;

} // namespace orrery::look
