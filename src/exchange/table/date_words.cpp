#include "exchange/table/date_words.h"

#include "look/number_format/locale_names.h"
#include "look/number_format/locale_table.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <utf8proc.h>
#include <vector>

namespace orrery::exchange {
namespace {

constexpr std::size_t kMonths = 12;
constexpr std::size_t kWeekdays = 7;

/// What stands in dates beside numbers and names: articles, prepositions, endings of ordinals, and
/// the signs for year, month and day.
constexpr std::array<std::string_view, 25> kFillWords = {
    "de", "del", "of", "the", "st", "nd", "rd", "th", "er", "den", "der", "le", "el",
    "do", "da",  "di", "d",   "年", "月", "日", "년", "월", "일",  "г",   "º"};

/// The words of all languages; a name of several words counts with each of them.
class DateWords {
public:
    DateWords()
    {
        AddLanguage(kEnglishWords);
        for (const look::LocaleEntry& locale : look::Locales()) {
            if (locale.language != kEnglishWords)
                AddLanguage(locale.language);
        }
        for (const std::string_view word : kFillWords)
            fillWords_.emplace(word);
        std::erase_if(fillWords_, [this](const auto& word) { return months_.contains(word); });
    }

    std::span<const MonthWord> MonthsOf(const std::string& word) const
    {
        const auto found = months_.find(word);
        return found == months_.end() ? std::span<const MonthWord>() : found->second;
    }
    bool IsFillWord(const std::string& word) const { return fillWords_.contains(word); }

private:
    void AddLanguage(std::uint16_t language)
    {
        const look::LocaleNames names = look::NamesOf(language);
        for (std::size_t month = 0; month < kMonths; ++month) {
            for (const std::string_view name :
                 {names.Month(month), names.ShortMonth(month), names.MonthOfDate(month)})
                AddMonth(name, {language, static_cast<int>(month) + 1});
        }
        for (std::size_t day = 0; day < kWeekdays; ++day) {
            AddWeekday(names.Day(day));
            AddWeekday(names.ShortDay(day));
        }
    }

    /// A name with digits or blanks is not one word of a date.
    void AddMonth(std::string_view name, const MonthWord& month)
    {
        const std::string word = FoldWord(name);
        if (word.empty() || word.find_first_of(" 0123456789") != std::string::npos)
            return;
        std::vector<MonthWord>& meanings = months_[word];
        const bool isKnown =
            std::any_of(meanings.begin(), meanings.end(), [&](const MonthWord& known) {
                return known.language == month.language && known.month == month.month;
            });
        if (!isKnown)
            meanings.push_back(month);
    }

    void AddWeekday(std::string_view name)
    {
        std::string word;
        for (const char c : std::string(name) + ' ') {
            if (c != ' ' && c != '-') {
                word += c;
                continue;
            }
            if (!word.empty())
                fillWords_.insert(FoldWord(word));
            word.clear();
        }
    }

    std::unordered_map<std::string, std::vector<MonthWord>> months_;
    std::unordered_set<std::string> fillWords_;
};

const DateWords& Words()
{
    static const DateWords words;
    return words;
}

} // namespace

std::string FoldWord(std::string_view word)
{
    while (word.ends_with('.'))
        word.remove_suffix(1);
    utf8proc_uint8_t* folded = nullptr;
    const auto size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(word.data()),
        static_cast<utf8proc_ssize_t>(word.size()), &folded,
        static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE | UTF8PROC_CASEFOLD));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
    if (size < 0)
        return std::string(word);
    return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(size)};
}

std::span<const MonthWord> MonthsOf(const std::string& word)
{
    return Words().MonthsOf(word);
}

bool IsFillWord(const std::string& word)
{
    return Words().IsFillWord(word);
}

} // namespace orrery::exchange
