#include "look/canvas/pattern_rows.h"

namespace orrery::look {

std::array<std::uint8_t, 8> PatternRows(book::FillPattern pattern)
{
    using book::FillPattern;
    const auto twice = [](std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d) {
        return std::array<std::uint8_t, 8>{a, b, c, d, a, b, c, d};
    };
    switch (pattern) {
    case FillPattern::None:
        return {};
    case FillPattern::Solid:
        return twice(0xFF, 0xFF, 0xFF, 0xFF);
    case FillPattern::MediumGray:
        return twice(0xAA, 0x55, 0xAA, 0x55);
    case FillPattern::DarkGray:
        return twice(0xDD, 0x77, 0xDD, 0x77);
    case FillPattern::LightGray:
        return twice(0x88, 0x22, 0x88, 0x22);
    case FillPattern::DarkHorizontal:
        return twice(0xFF, 0xFF, 0x00, 0x00);
    case FillPattern::DarkVertical:
        return twice(0xCC, 0xCC, 0xCC, 0xCC);
    case FillPattern::DarkDown:
        return twice(0xCC, 0x66, 0x33, 0x99);
    case FillPattern::DarkUp:
        return twice(0x33, 0x66, 0xCC, 0x99);
    case FillPattern::DarkGrid:
        return twice(0xCC, 0xCC, 0x33, 0x33);
    case FillPattern::DarkTrellis:
        return twice(0xFF, 0x66, 0xFF, 0x99);
    case FillPattern::LightHorizontal:
        return twice(0xFF, 0x00, 0x00, 0x00);
    case FillPattern::LightVertical:
        return twice(0x88, 0x88, 0x88, 0x88);
    case FillPattern::LightDown:
        return twice(0x88, 0x44, 0x22, 0x11);
    case FillPattern::LightUp:
        return twice(0x11, 0x22, 0x44, 0x88);
    case FillPattern::LightGrid:
        return twice(0xFF, 0x88, 0x88, 0x88);
    case FillPattern::LightTrellis:
        return twice(0x88, 0x55, 0x22, 0x55);
    case FillPattern::Gray125:
        return twice(0x88, 0x00, 0x22, 0x00);
    case FillPattern::Gray0625:
        return twice(0x80, 0x00, 0x08, 0x00);
    }
    return {};
}

} // namespace orrery::look
