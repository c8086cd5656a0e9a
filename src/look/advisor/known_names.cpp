#include "look/advisor/known_names.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iterator>
#include <memory>

namespace orrery::look {
namespace {

constexpr std::size_t kYearDigits = 4;
constexpr std::size_t kWeek = 7;
constexpr std::ptrdiff_t kMostMonths = 10;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Where a year stands in the text, or npos.
std::size_t FindYearAt(std::string_view text)
{
    for (std::size_t i = 0; i + kYearDigits <= text.size(); ++i) {
        const auto end = text.begin() + static_cast<std::ptrdiff_t>(i + kYearDigits);
        const bool isWhole =
            (i == 0 || !IsDigit(text[i - 1])) && (end == text.end() || !IsDigit(*end)) &&
            std::all_of(text.begin() + static_cast<std::ptrdiff_t>(i), end, IsDigit);
        const bool isYear = text[i] == '2' || (text[i] == '1' && text[i + 1] == '9');
        if (isWhole && isYear)
            return i;
    }
    return std::string_view::npos;
}

std::string_view Strip(std::string_view text)
{
    constexpr std::string_view ends = " \t\n.,";
    const std::size_t first = text.find_first_not_of(ends);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(ends) - first + 1);
}

template <std::size_t Size>
std::vector<std::vector<std::string>> FoldLists(const model::NameLists<Size>& lists)
{
    std::vector<std::vector<std::string>> folded;
    for (std::int16_t i = 0; i < lists.Count(); ++i) {
        const auto& names = lists.At(i);
        std::vector<std::string>& list = folded.emplace_back();
        std::ranges::transform(names, std::back_inserter(list), FoldName);
    }
    return folded;
}

/// "Deutsch" of "Deutsch, short".
std::string Language(const std::string& title)
{
    return title.substr(0, title.find(','));
}

} // namespace

std::string FoldName(std::string_view text)
{
    std::string plain(Strip(text));
    utf8proc_uint8_t* folded = nullptr;
    const auto size = utf8proc_map(
        reinterpret_cast<const utf8proc_uint8_t*>(plain.data()),
        static_cast<utf8proc_ssize_t>(plain.size()), &folded,
        static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE | UTF8PROC_CASEFOLD));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(folded, &std::free);
    if (size < 0)
        return plain;
    return {reinterpret_cast<const char*>(folded), static_cast<std::size_t>(size)};
}

std::string WithoutYear(std::string_view text)
{
    std::string rest(text);
    if (const std::size_t at = FindYearAt(text); at != std::string_view::npos)
        rest.erase(at, kYearDigits);
    return FoldName(rest);
}

std::optional<std::int32_t> FindYear(std::string_view text)
{
    const std::size_t at = FindYearAt(text);
    if (at == std::string_view::npos)
        return std::nullopt;
    return std::atoi(std::string(text.substr(at, kYearDigits)).c_str());
}

KnownNames::KnownNames(const model::NameTables& names)
    : names_(names), weekdays_(FoldLists(names.Weekdays)), months_(FoldLists(names.Months))
{
}

std::optional<WeekdayMatch> KnownNames::FindWeekdays(const std::vector<std::string>& texts) const
{
    std::vector<std::string> folded;
    std::ranges::transform(texts, std::back_inserter(folded), FoldName);
    std::optional<WeekdayMatch> found;
    for (std::size_t list = 0; list < weekdays_.size(); ++list) {
        for (std::size_t first = 0; first < 2; ++first) {
            bool isSame = !folded.front().empty();
            bool isExact = true;
            for (std::size_t i = 0; i < kWeek && isSame; ++i) {
                const std::size_t day = (i + first) % kWeek;
                isSame = folded[i] == weekdays_[list][day];
                isExact =
                    isExact && texts[i] == names_.Weekdays.At(static_cast<std::int16_t>(list))[day];
            }
            if (isSame && (isExact || !found))
                found = {static_cast<std::int16_t>(list), static_cast<std::int16_t>(first)};
            if (isSame && isExact)
                return found;
        }
    }
    return found;
}

std::optional<std::int16_t> KnownNames::FindFirstDay(const std::vector<std::string>& texts) const
{
    std::vector<std::string> folded;
    std::ranges::transform(texts, std::back_inserter(folded), FoldName);
    std::array<bool, 2> isPossible{};
    for (const auto& list : weekdays_) {
        for (std::size_t first = 0; first < isPossible.size(); ++first) {
            bool isSame = true;
            for (std::size_t i = 0; i < kWeek && isSame; ++i)
                isSame = !folded[i].empty() && list[(i + first) % kWeek].starts_with(folded[i]);
            isPossible[first] = isPossible[first] || isSame;
        }
    }
    if (isPossible[0] == isPossible[1])
        return std::nullopt;
    return static_cast<std::int16_t>(isPossible[0] ? 0 : 1);
}

bool KnownNames::BeginsWeekday(std::string_view text) const
{
    const std::string folded = FoldName(text);
    return !folded.empty() && std::ranges::any_of(weekdays_, [&](const auto& list) {
        return std::ranges::any_of(
            list, [&](const std::string& name) { return name.starts_with(folded); });
    });
}

std::vector<std::int16_t> KnownNames::ListsWithMonth(std::string_view text) const
{
    std::vector<std::int16_t> lists;
    const std::string name = WithoutYear(text);
    for (std::size_t list = 0; list < months_.size() && !name.empty(); ++list) {
        if (std::ranges::find(months_[list], name) != months_[list].end())
            lists.push_back(static_cast<std::int16_t>(list));
    }
    return lists;
}

std::int16_t KnownNames::MonthOf(std::string_view text) const
{
    const std::string name = WithoutYear(text);
    for (const auto& list : months_) {
        const auto found = std::ranges::find(list, name);
        if (!name.empty() && found != list.end())
            return static_cast<std::int16_t>(found - list.begin() + 1);
    }
    return 0;
}

std::optional<std::int16_t> KnownNames::FindMonths(const std::vector<std::string>& texts) const
{
    std::optional<std::int16_t> best;
    std::ptrdiff_t most = kMostMonths - 1;
    for (std::size_t list = 0; list < months_.size(); ++list) {
        std::ptrdiff_t same = 0;
        const auto& names = names_.Months.At(static_cast<std::int16_t>(list));
        bool isExact = true;
        for (std::size_t i = 0; i < texts.size() && i < names.size(); ++i) {
            same += WithoutYear(texts[i]) == months_[list][i] ? 1 : 0;
            isExact = isExact && texts[i].find(names[i]) != std::string::npos;
        }
        if (isExact && same == static_cast<std::ptrdiff_t>(names.size()))
            return static_cast<std::int16_t>(list);
        if (same > most) {
            most = same;
            best = static_cast<std::int16_t>(list);
        }
    }
    return best;
}

std::optional<std::int16_t> KnownNames::InLanguage(const std::vector<std::int16_t>& months,
                                                   std::int16_t weekdays) const
{
    const std::string language = Language(names_.Weekdays.Title(weekdays));
    for (const std::int16_t list : months) {
        if (!language.empty() && Language(names_.Months.Title(list)) == language)
            return list;
    }
    return std::nullopt;
}

} // namespace orrery::look
