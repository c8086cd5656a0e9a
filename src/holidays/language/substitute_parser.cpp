#include "holidays/language/substitute_parser.h"

#include "holidays/language/words.h"
#include "holidays/language/year_condition.h"
#include "util/text.h"

#include <span>
#include <string>
#include <vector>

namespace orrery::holidays {
namespace {

using Words = std::span<const std::string>;

/// Takes the words from the front if they stand there.
bool Take(Words& words, std::initializer_list<std::string_view> wanted)
{
    if (words.size() < wanted.size() || !std::equal(wanted.begin(), wanted.end(), words.begin()))
        return false;
    words = words.subspan(wanted.size());
    return true;
}

bool TakeCondition(Words& words, Substitute& substitute)
{
    do {
        if (Take(words, {"HOLIDAY"}))
            substitute.ifHoliday = true;
        else if (const auto weekday = words.empty() ? std::nullopt : WeekdayOfWord(words.front())) {
            substitute.weekdays |= 1U << static_cast<unsigned>(*weekday);
            words = words.subspan(1);
        }
        else
            return false;
    } while (Take(words, {"OR"}));
    return true;
}

bool TakeTarget(Words& words, Substitute::Target& target)
{
    using Kind = Substitute::Target::Kind;
    constexpr int mostDays = 366;
    if (Take(words, {"NEXT", "WORKDAY"})) {
        target.kind = Kind::NextWorkday;
        return true;
    }
    if (Take(words, {"NEXT", "DAY"})) {
        target.kind = Kind::NextDay;
        return true;
    }
    if (words.empty())
        return false;
    if (const auto weekday = WeekdayOfWord(words.front())) {
        words = words.subspan(1);
        target.value = *weekday;
        target.kind = Kind::WeekdayBefore;
        if (Take(words, {"BEFORE"}))
            return true;
        target.kind = Kind::WeekdayAfter;
        return Take(words, {"AFTER"});
    }
    const auto days = IntegerOf(words.front());
    const bool isSigned = words.front().starts_with('+') || words.front().starts_with('-');
    if (!days || !isSigned || *days == 0 || std::abs(*days) > mostDays)
        return false;
    words = words.subspan(1);
    target = {Kind::Days, *days};
    return true;
}

bool TakeYear(Words& words, std::string_view word, int& year)
{
    if (!Take(words, {word}))
        return true;
    const auto number = words.empty() ? std::nullopt : IntegerOf(words.front());
    if (!number || !IsRuleYear(*number))
        return false;
    year = *number;
    words = words.subspan(1);
    return true;
}

/// Where the word "called" begins, or the end.
std::size_t PlaceOfName(std::string_view text)
{
    const std::string capitals = ' ' + util::ToUpperAscii(text) + ' ';
    return std::min(capitals.find(" CALLED "), text.size());
}

} // namespace

std::optional<Substitute> ParseSubstitute(std::string_view text)
{
    constexpr std::string_view called = "called";
    Substitute substitute;
    const std::size_t place = PlaceOfName(text);
    if (place < text.size()) {
        substitute.name = util::Trim(text.substr(place + called.size()));
        if (substitute.name.empty())
            return std::nullopt;
    }
    const std::vector<std::string> all = WordsOf(text.substr(0, place));
    Words words = all;
    if (!TakeCondition(words, substitute))
        return std::nullopt;
    substitute.isMove = Take(words, {"MOVE", "TO"});
    if (!substitute.isMove && !Take(words, {"ALSO"}))
        return std::nullopt;
    if (!TakeTarget(words, substitute.target) || !TakeYear(words, "FROM", substitute.years.first) ||
        !TakeYear(words, "UNTIL", substitute.years.last) || !words.empty())
        return std::nullopt;
    return substitute;
}

} // namespace orrery::holidays
