#include "exchange/table/date_text.h"

#include "exchange/table/date_words.h"
#include "util/text.h"

#include <algorithm>

namespace orrery::exchange {
namespace {

using holidays::Date;
using Number = DateParts::Number;

constexpr std::size_t kLongestDate = 64;
constexpr int kDigitsOfYear = 4;
constexpr std::string_view kBetween = " \t./-,()'";
constexpr std::string_view kNoBreakSpace = "\xC2\xA0";

bool IsDigit(char c)
{
    return '0' <= c && c <= '9';
}

bool IsBetween(char c)
{
    return kBetween.find(c) != std::string_view::npos;
}

/// Cuts the time behind a date: from the number in front of the first colon on.
std::string_view WithoutTime(std::string_view text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        return text;
    std::size_t start = colon;
    while (start > 0 && IsDigit(text[start - 1]))
        --start;
    const std::string_view rest = text.substr(colon + 1);
    const bool isTime = start > 0 && start < colon && !rest.empty() && IsDigit(rest.front()) &&
                        (text[start - 1] == ' ' || text[start - 1] == 'T') &&
                        rest.find_first_not_of("0123456789:.+- AaPpMmZ") == std::string_view::npos;
    return isTime ? util::Trim(text.substr(0, start - 1)) : text;
}

/// Takes the numbers and words of a date one by one.
class Splitter {
public:
    explicit Splitter(std::string_view text) : text_(text) {}

    std::optional<DateParts> Run()
    {
        while (at_ < text_.size()) {
            if (IsDigit(text_[at_])) {
                if (!TakeNumber())
                    return std::nullopt;
            }
            else if (IsBetween(text_[at_])) {
                parts_.hasPoints = parts_.hasPoints || (text_[at_] == '.' && HasOneNumber());
                ++at_;
            }
            else if (!TakeWord())
                return std::nullopt;
        }
        constexpr std::size_t all = 3;
        const std::size_t found = parts_.numbers.size() + (parts_.month.empty() ? 0 : 1);
        return found == all ? std::optional(std::move(parts_)) : std::nullopt;
    }

private:
    bool HasOneNumber() const { return parts_.numbers.size() == 1 && parts_.month.empty(); }

    bool TakeNumber()
    {
        constexpr int hundred = 100;
        constexpr int digitsOfAll = 8; // 20270501
        int value = 0;
        int digits = 0;
        for (; at_ < text_.size() && IsDigit(text_[at_]); ++at_) {
            if (++digits > digitsOfAll)
                return false;
            value = value * 10 + (text_[at_] - '0');
        }
        if (digits == digitsOfAll && parts_.numbers.empty()) {
            parts_.numbers = {{value / (hundred * hundred), kDigitsOfYear},
                              {value / hundred % hundred, 2},
                              {value % hundred, 2}};
            return true;
        }
        parts_.numbers.push_back({value, digits});
        return (digits <= 2 || digits == kDigitsOfYear) && parts_.numbers.size() <= 3;
    }

    bool TakeWord()
    {
        const std::size_t start = at_;
        while (at_ < text_.size() && !IsDigit(text_[at_]) && !IsBetween(text_[at_]))
            ++at_;
        std::string word = FoldWord(text_.substr(start, at_ - start));
        if (!MonthsOf(word).empty() && parts_.month.empty()) {
            parts_.month = std::move(word);
            return true;
        }
        return IsFillWord(word);
    }

    std::string_view text_;
    std::size_t at_ = 0;
    DateParts parts_;
};

int YearOfNumber(const Number& number)
{
    constexpr int firstOfCentury = 70;
    if (number.digits == kDigitsOfYear)
        return number.value;
    return number.value + (number.value < firstOfCentury ? 2000 : 1900);
}

bool IsShort(const Number& number)
{
    return number.digits <= 2;
}

bool IsYear(const Number& number)
{
    return number.digits >= 2;
}

std::optional<Date> MakeDate(const Number& year, int month, const Number& day)
{
    const std::chrono::year_month_day date(std::chrono::year(YearOfNumber(year)),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day.value)));
    if (!IsYear(year) || !IsShort(day) || !date.ok() || date.year() < std::chrono::year(1))
        return std::nullopt;
    return Date(date);
}

std::optional<Date> DateOfNumbers(const std::vector<Number>& n, DateOrder order)
{
    const auto make = [&n](std::size_t year, std::size_t month, std::size_t day) {
        return IsShort(n[month]) ? MakeDate(n[year], n[month].value, n[day]) : std::nullopt;
    };
    switch (order) {
    case DateOrder::DayMonthYear:
        return make(2, 1, 0);
    case DateOrder::MonthDayYear:
        return make(2, 0, 1);
    case DateOrder::YearMonthDay:
        return make(0, 1, 2);
    }
    return std::nullopt;
}

/// The month that a word is in a language, else in the first that knows it.
int MonthIn(const std::string& word, std::uint16_t language)
{
    const auto meanings = MonthsOf(word);
    const auto found =
        std::find_if(meanings.begin(), meanings.end(),
                     [language](const MonthWord& known) { return known.language == language; });
    return found != meanings.end() ? found->month : meanings.empty() ? 0 : meanings.front().month;
}

} // namespace

std::optional<DateParts> SplitDate(std::string_view text)
{
    if (text.size() > kLongestDate)
        return std::nullopt;
    std::string plain(text);
    for (std::size_t at = 0; (at = plain.find(kNoBreakSpace, at)) != std::string::npos;)
        plain.replace(at, kNoBreakSpace.size(), 1, ' ');
    return Splitter(WithoutTime(util::Trim(plain))).Run();
}

std::optional<Date> DateOf(const DateParts& parts, const DateReading& reading)
{
    if (parts.month.empty())
        return DateOfNumbers(parts.numbers, reading.order);
    const Number& first = parts.numbers.front();
    const Number& second = parts.numbers.back();
    const bool isYearFirst = first.digits == kDigitsOfYear;
    return MakeDate(isYearFirst ? first : second, MonthIn(parts.month, reading.language),
                    isYearFirst ? second : first);
}

std::vector<DateOrder> OrdersOf(const DateParts& parts)
{
    std::vector<DateOrder> orders;
    if (!parts.month.empty())
        return orders;
    for (const DateOrder order : kDateOrders) {
        if (parts.hasPoints &&
            (order == DateOrder::MonthDayYear ||
             (order == DateOrder::YearMonthDay && parts.numbers.front().digits != kDigitsOfYear)))
            continue;
        if (DateOfNumbers(parts.numbers, order))
            orders.push_back(order);
    }
    return orders;
}

bool IsDate(std::string_view text)
{
    const auto parts = SplitDate(text);
    return parts &&
           (parts->month.empty() ? !OrdersOf(*parts).empty() : DateOf(*parts, {}).has_value());
}

} // namespace orrery::exchange
