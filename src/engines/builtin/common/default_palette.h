#pragma once

#include "book/look/color.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace orrery::builtin {

/// The colours of a workbook by index; the first eight are those that no palette changes.
/// [MS-XLS] 2.5.161 (Icv), ECMA-376 18.8.27
using Palette = std::array<book::Color, 64>;

/// That of a workbook without a palette of its own. Its first eight colours come again after them.
const Palette& DefaultPalette();

/// The palette's colour; nothing for the colours of the system (64: texts and lines, 65: what is
/// behind them, and others), which are the automatic ones.
std::optional<book::Color> PaletteColor(const Palette& palette, std::size_t index);

} // namespace orrery::builtin
