#pragma once

#include "holidays/language/rule.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::holidays {

/// What a user wants to see of a calendar's holidays.
struct HolidayChoice {
    std::string region; ///< its code in capitals; empty: the country's own days
    std::vector<Category> categories = {Category::Public};
    std::string language; ///< its code in small letters; empty: the names of the rules
    friend bool operator==(const HolidayChoice&, const HolidayChoice&) = default;
};

/// All categories, in their order.
std::vector<Category> AllCategories();

/// "public", "bank", ...
std::string_view WordOf(Category category);
/// The category of a word, in any case.
std::optional<Category> FindCategory(std::string_view word);

/// "public bank".
std::string FormatCategories(const std::vector<Category>& categories);
/// Categories with blanks between them, in any order; "all" is every one. Nothing if a word is
/// none, or for no words.
std::optional<std::vector<Category>> ParseCategories(std::string_view text);

} // namespace orrery::holidays
