#include "holidays/language/holiday_choice.h"

#include "holidays/language/words.h"
#include "util/text.h"

#include <algorithm>
#include <array>

namespace orrery::holidays {
namespace {

constexpr std::array<std::string_view, 6> kCategoryWords = {"public",   "bank",       "school",
                                                            "optional", "observance", "half"};

} // namespace

std::vector<Category> AllCategories()
{
    return {Category::Public,   Category::Bank,       Category::School,
            Category::Optional, Category::Observance, Category::Half};
}

std::string_view WordOf(Category category)
{
    return kCategoryWords.at(static_cast<std::size_t>(category));
}

std::optional<Category> FindCategory(std::string_view word)
{
    for (const Category category : AllCategories()) {
        if (util::EqualIgnoringCase(WordOf(category), word))
            return category;
    }
    return std::nullopt;
}

std::string FormatCategories(const std::vector<Category>& categories)
{
    std::string text;
    for (const Category category : categories)
        (text += text.empty() ? "" : " ") += WordOf(category);
    return text;
}

std::optional<std::vector<Category>> ParseCategories(std::string_view text)
{
    const std::vector<std::string> words = WordsOf(text);
    if (words.size() == 1 && words.front() == "ALL")
        return AllCategories();
    std::vector<Category> categories;
    for (const std::string& word : words) {
        const auto category = FindCategory(word);
        if (!category)
            return std::nullopt;
        categories.push_back(*category);
    }
    std::sort(categories.begin(), categories.end());
    categories.erase(std::unique(categories.begin(), categories.end()), categories.end());
    return categories.empty() ? std::nullopt : std::optional(categories);
}

} // namespace orrery::holidays
