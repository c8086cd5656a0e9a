#include "engines/common/sheet_names.h"

#include "book/error.h"
#include "util/error.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_set>

namespace orrery::engines {
namespace {

using util::AppendUtf8;
using util::NextCharacter;

constexpr std::size_t kMaxUnits = 31;

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

std::size_t UnitsOf(char32_t character)
{
    return character > 0xFFFF ? 2 : 1;
}

std::size_t CountUnits(std::string_view text)
{
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size();)
        units += UnitsOf(NextCharacter(text, at));
    return units;
}

/// "Desk" for "Desk (12)"; the whole name if it has no copy number.
std::string_view WithoutCopyNumber(std::string_view name)
{
    const std::size_t open = name.rfind(" (");
    if (!name.ends_with(')') || open == std::string_view::npos || open == 0)
        return name;
    const std::string_view number = name.substr(open + 2, name.size() - open - 3);
    const bool digits = !number.empty() && number.find_first_not_of("0123456789") == number.npos;
    return digits ? name.substr(0, open) : name;
}

bool IsForbidden(char32_t character)
{
    constexpr std::u32string_view kSigns = U":\\/?*[]";
    const bool control = character < 0x20 || character == 0x7F;
    const bool noCharacter = character == 0xFFFE || character == 0xFFFF;
    return control || noCharacter || kSigns.find(character) != kSigns.npos;
}

} // namespace

bool IsValidSheetName(std::string_view name)
{
    if (name.empty() || !util::IsValidUtf8(name) || CountUnits(name) > kMaxUnits)
        return false;
    for (std::size_t at = 0; at < name.size();) {
        if (IsForbidden(NextCharacter(name, at)))
            return false;
    }
    return name.front() != '\'' && name.back() != '\'' && !SameSheetName(name, "History");
}

bool SameSheetName(std::string_view left, std::string_view right)
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

std::string_view CutToUnits(std::string_view text, std::size_t units)
{
    std::size_t end = 0;
    while (end < text.size()) {
        std::size_t next = end;
        const std::size_t needed = UnitsOf(NextCharacter(text, next));
        if (needed > units)
            break;
        units -= needed;
        end = next;
    }
    return text.substr(0, end);
}

std::string FoldCase(std::string_view name)
{
    std::string folded;
    for (std::size_t at = 0; at < name.size();)
        AppendUtf8(folded, FoldCharacter(NextCharacter(name, at)));
    return folded;
}

void CheckSheetName(std::string_view name, const std::vector<std::string>& others)
{
    if (!IsValidSheetName(name))
        throw util::Error(book::ErrorKind::InvalidSheetName, std::string(name));
    const auto isSame = [name](const auto& other) { return SameSheetName(other, name); };
    if (std::any_of(others.begin(), others.end(), isSame))
        throw util::Error(book::ErrorKind::SheetNameTaken, std::string(name));
}

std::string CopyName(std::string_view name, const std::vector<std::string>& taken)
{
    const std::string_view base = WithoutCopyNumber(name);
    std::unordered_set<std::string> folded;
    for (const std::string& other : taken)
        folded.insert(FoldCase(other));
    for (std::size_t number = 2;; ++number) {
        const std::string suffix = " (" + std::to_string(number) + ")";
        std::string candidate = std::string(CutToUnits(base, kMaxUnits - suffix.size())) + suffix;
        if (!folded.contains(FoldCase(candidate)))
            return candidate;
    }
}

} // namespace orrery::engines
