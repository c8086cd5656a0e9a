#include "engines/builtin/xls/compound/upper_case.h"

#include <algorithm>
#include <array>

namespace orrery::xls {
namespace {

// The small letters whose capitals are at a fixed distance; `step` 2 where capitals and small
// letters alternate. From Unicode's character database.
struct CaseRange {
    char16_t first;
    char16_t last;
    int distance;
    int step;
};
constexpr auto kSmallLetters = std::to_array<CaseRange>({
    {0xB5, 0xB5, 743, 1}, // the micro sign: a capital mu
    {0xE0, 0xF6, -32, 1},     {0xF8, 0xFE, -32, 1},     {0xFF, 0xFF, 121, 1},
    {0x101, 0x12F, -1, 2},    {0x131, 0x131, -232, 1}, // i without its dot
    {0x133, 0x137, -1, 2},    {0x13A, 0x148, -1, 2},    {0x14B, 0x177, -1, 2},
    {0x17A, 0x17E, -1, 2},    {0x17F, 0x17F, -300, 1}, // long s
    {0x183, 0x185, -1, 2},    {0x188, 0x188, -1, 1},    {0x18C, 0x18C, -1, 1},
    {0x192, 0x192, -1, 1},    {0x199, 0x199, -1, 1},    {0x1A1, 0x1A5, -1, 2},
    {0x1A8, 0x1A8, -1, 1},    {0x1AD, 0x1AD, -1, 1},    {0x1B0, 0x1B0, -1, 1},
    {0x1B4, 0x1B6, -1, 2},    {0x1CE, 0x1DC, -1, 2},    {0x1DF, 0x1EF, -1, 2},
    {0x1F5, 0x1F5, -1, 1},    {0x1F9, 0x21F, -1, 2},    {0x223, 0x233, -1, 2},
    {0x253, 0x253, -210, 1},  {0x254, 0x254, -206, 1},  {0x256, 0x257, -205, 1},
    {0x259, 0x259, -202, 1},  {0x25B, 0x25B, -203, 1},  {0x3AC, 0x3AC, -38, 1},
    {0x3AD, 0x3AF, -37, 1},   {0x3B1, 0x3C1, -32, 1},   {0x3C2, 0x3C2, -31, 1}, // the final sigma
    {0x3C3, 0x3CB, -32, 1},   {0x3CC, 0x3CC, -64, 1},   {0x3CD, 0x3CE, -63, 1},
    {0x3D0, 0x3D0, -62, 1}, // letters of old Greek
    {0x3D1, 0x3D1, -57, 1},   {0x3D9, 0x3EF, -1, 2},    {0x430, 0x44F, -32, 1},
    {0x450, 0x45F, -80, 1},   {0x461, 0x481, -1, 2},    {0x48B, 0x4BF, -1, 2},
    {0x4C2, 0x4CE, -1, 2},    {0x4CF, 0x4CF, -15, 1},   {0x4D1, 0x52F, -1, 2},
    {0x561, 0x586, -48, 1},   {0x1E01, 0x1E95, -1, 2},  {0x1E9B, 0x1E9B, -59, 1},
    {0x1EA1, 0x1EFF, -1, 2},  {0x2170, 0x217F, -16, 1}, // Roman numerals
    {0x24D0, 0x24E9, -26, 1},                           // letters in circles
    {0xFF41, 0xFF5A, -32, 1},
});

} // namespace

char16_t ToUpperUnit(char16_t unit)
{
    if (unit < 0x80) // most units
        return unit >= 'a' && unit <= 'z' ? static_cast<char16_t>(unit - 32) : unit;
    const auto* const found =
        std::find_if(kSmallLetters.begin(), kSmallLetters.end(), [unit](const CaseRange& range) {
            return unit >= range.first && unit <= range.last &&
                   (unit - range.first) % range.step == 0;
        });
    return found == kSmallLetters.end() ? unit : static_cast<char16_t>(unit + found->distance);
}

} // namespace orrery::xls
