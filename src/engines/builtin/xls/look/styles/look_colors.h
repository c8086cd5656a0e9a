#pragma once

#include "book/look/color.h"
#include "engines/builtin/common/default_palette.h"
#include "engines/builtin/theme/theme.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::xls {

/// What a colour stands for where it is the system's own: then it is the automatic one.
enum class ColorUse { Line, Background };

/// A colour of the newer records. [MS-XLS] 2.5.155 (FullColorExt), 2.5.34 (CFColor)
struct FullColor {
    enum Kind : std::uint32_t { Automatic, Indexed, Rgb, Theme, NotSet };
    std::uint32_t kind = Automatic;
    std::uint32_t value = 0;
    double tint = 0; ///< [-1:1]
};

/// The colours that the records of a workbook refer to.
class LookColors {
public:
    /// Takes the data of a PALETTE record; what is missing stays as it is. [MS-XLS] 2.4.188
    void SetPalette(std::string_view data);
    /// Takes the data of a THEME record.
    void SetTheme(std::string_view data);
    const builtin::ThemeColors& Theme() const { return theme_; }
    const builtin::Palette& Palette() const { return palette_; }

    /// Nothing for the automatic colour. [MS-XLS] 2.5.161
    std::optional<book::Color> Indexed(std::uint32_t icv, ColorUse use) const;
    /// Nothing for the automatic colour and for one that is not set.
    std::optional<book::Color> Full(const FullColor& color, ColorUse use) const;

private:
    builtin::Palette palette_ = builtin::DefaultPalette();
    builtin::ThemeColors theme_;
};

} // namespace orrery::xls
