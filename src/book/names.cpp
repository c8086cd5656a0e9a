#include "book/names.h"

#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace orrery::book {
namespace {

using util::NextCharacter;

// The capitals whose small letters are at a fixed distance; `step` 2 where capitals and small
// letters alternate. From Unicode's simple case folding.
struct CaseRange {
    char32_t first;
    char32_t last;
    int distance;
    unsigned step;
};
constexpr std::array<CaseRange, 38> kCapitals = {{
    {0xB5, 0xB5, 0x3BC - 0xB5, 1}, // the micro sign is a small mu
    {0xC0, 0xD6, 32, 1},
    {0xD8, 0xDE, 32, 1},
    {0x100, 0x12E, 1, 2},
    {0x132, 0x136, 1, 2},
    {0x139, 0x147, 1, 2},
    {0x14A, 0x176, 1, 2},
    {0x178, 0x178, 0xFF - 0x178, 1},
    {0x179, 0x17D, 1, 2},
    {0x17F, 0x17F, 's' - 0x17F, 1}, // long s
    {0x1A0, 0x1A4, 1, 2},
    {0x1AF, 0x1AF, 1, 1},
    {0x1CD, 0x1DB, 1, 2},
    {0x1DE, 0x1EE, 1, 2},
    {0x1F8, 0x21E, 1, 2},
    {0x222, 0x232, 1, 2},
    {0x386, 0x386, 38, 1},
    {0x388, 0x38A, 37, 1},
    {0x38C, 0x38C, 64, 1},
    {0x38E, 0x38F, 63, 1},
    {0x391, 0x3A1, 32, 1},
    {0x3A3, 0x3AB, 32, 1},
    {0x3C2, 0x3C2, 1, 1}, // the final sigma
    {0x3D8, 0x3EE, 1, 2},
    {0x400, 0x40F, 80, 1},
    {0x410, 0x42F, 32, 1},
    {0x460, 0x480, 1, 2},
    {0x48A, 0x4BE, 1, 2},
    {0x4C0, 0x4C0, 15, 1},
    {0x4C1, 0x4CD, 1, 2},
    {0x4D0, 0x52E, 1, 2},
    {0x531, 0x556, 48, 1},
    {0x1E00, 0x1E94, 1, 2},
    {0x1EA0, 0x1EFE, 1, 2},
    {0x2160, 0x216F, 16, 1}, // Roman numerals
    {0x24B6, 0x24CF, 26, 1}, // letters in circles
    {0xFF21, 0xFF3A, 32, 1},
    {0x10400, 0x10427, 40, 1},
}};

char32_t FoldCharacter(char32_t character)
{
    if (character < 0x80) // most characters
        return character >= 'A' && character <= 'Z' ? character + 32 : character;
    const auto found =
        std::find_if(kCapitals.begin(), kCapitals.end(), [&](const CaseRange& range) {
            return character >= range.first && character <= range.last &&
                   (character - range.first) % range.step == 0;
        });
    return found == kCapitals.end()
               ? character
               : static_cast<char32_t>(static_cast<int>(character) + found->distance);
}

} // namespace

bool SameName(std::string_view left, std::string_view right)
{
    std::size_t atLeft = 0;
    std::size_t atRight = 0;
    while (atLeft < left.size() && atRight < right.size()) {
        if (FoldCharacter(NextCharacter(left, atLeft)) !=
            FoldCharacter(NextCharacter(right, atRight)))
            return false;
    }
    return atLeft == left.size() && atRight == right.size();
}

std::string FoldCase(std::string_view name)
{
    std::string folded;
    for (std::size_t at = 0; at < name.size();)
        util::AppendUtf8(folded, FoldCharacter(NextCharacter(name, at)));
    return folded;
}

} // namespace orrery::book
