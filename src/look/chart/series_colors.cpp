#include "look/chart/series_colors.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace orrery::look {
namespace {

/// The accents of Office's first theme, for charts that name none.
constexpr std::array<book::Color, 6> kUsualAccents{{{0x4F, 0x81, 0xBD},
                                                    {0xC0, 0x50, 0x4D},
                                                    {0x9B, 0xBB, 0x59},
                                                    {0x80, 0x64, 0xA2},
                                                    {0x4B, 0xAC, 0xC6},
                                                    {0xF7, 0x96, 0x46}}};

/// How the accents change at each further turn.
constexpr std::array<double, 9> kTurns{0, -0.4, 0.2, -0.2, 0.4, -0.5, 0.3, -0.3, 0.5};

std::uint8_t ChangeChannel(std::uint8_t channel, double change)
{
    const double value = change < 0 ? channel * (1 + change) : channel + (255 - channel) * change;
    return static_cast<std::uint8_t>(std::lround(value));
}

} // namespace

book::Color AutomaticColor(const book::Chart& chart, std::size_t number)
{
    const bool isEmpty = chart.accents.empty();
    const std::size_t count = isEmpty ? kUsualAccents.size() : chart.accents.size();
    const book::Color accent =
        isEmpty ? kUsualAccents[number % count] : chart.accents[number % count];
    return ChangeBrightness(accent, kTurns[number / count % kTurns.size()]);
}

book::Color ChangeBrightness(book::Color color, double change)
{
    return {ChangeChannel(color.red, change), ChangeChannel(color.green, change),
            ChangeChannel(color.blue, change)};
}

} // namespace orrery::look
