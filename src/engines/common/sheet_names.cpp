#include "engines/common/sheet_names.h"

#include "book/error.h"
#include "util/error.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

namespace orrery::engines {
namespace {

using util::NextCharacter;

constexpr std::size_t kMaxUnits = 31;

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
    return name.front() != '\'' && name.back() != '\'' && !SameName(name, "History");
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

void CheckSheetName(std::string_view name, const std::vector<std::string>& others)
{
    if (!IsValidSheetName(name))
        throw util::Error(book::ErrorKind::InvalidSheetName, std::string(name));
    const auto isSame = [name](const auto& other) { return SameName(other, name); };
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
