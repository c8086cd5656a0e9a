#include "look/layout/pages/page_breaks.h"

#include <cstddef>

namespace orrery::look {
namespace {

/// As sizes are sums of fractions.
constexpr double kTolerance = 0.01;

} // namespace

std::vector<PageSpan> DivideIntoPages(const PageDivision& division, double room, std::size_t most)
{
    std::vector<PageSpan> pages;
    auto nextBreak = division.breaks.begin();
    std::int32_t begin = division.first;
    double used = 0;
    const auto end = division.first + static_cast<std::int32_t>(division.sizes.size());
    const auto close = [&](std::int32_t next) {
        if (used > 0)
            pages.push_back({begin, next - 1});
        begin = next;
        used = 0;
    };
    for (std::int32_t index = division.first; index < end && pages.size() < most; ++index) {
        const double size = division.sizes[static_cast<std::size_t>(index - division.first)];
        const double titles = begin > division.lastTitle ? division.titleSize : 0;
        while (nextBreak != division.breaks.end() && *nextBreak < index)
            ++nextBreak;
        const bool isBroken = nextBreak != division.breaks.end() && *nextBreak == index;
        if (isBroken || (used > 0 && titles + used + size > room + kTolerance))
            close(index);
        used += size;
    }
    if (pages.size() < most)
        close(end);
    return pages;
}

} // namespace orrery::look
