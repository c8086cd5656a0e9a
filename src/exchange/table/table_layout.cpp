#include "exchange/table/table_layout.h"

#include <algorithm>

namespace orrery::exchange {
namespace {

constexpr std::array<std::string_view, 3> kOrderWords = {"dmy", "mdy", "ymd"};

} // namespace

std::string_view WordOf(DateOrder order)
{
    return kOrderWords.at(static_cast<std::size_t>(order));
}

std::optional<DateOrder> FindDateOrder(std::string_view word)
{
    const auto* const found = std::find(kOrderWords.begin(), kOrderWords.end(), word);
    if (found == kOrderWords.end())
        return std::nullopt;
    return static_cast<DateOrder>(found - kOrderWords.begin());
}

std::string_view InWords(DateOrder order)
{
    switch (order) {
    case DateOrder::DayMonthYear:
        return "day, month, year";
    case DateOrder::MonthDayYear:
        return "month, day, year";
    case DateOrder::YearMonthDay:
        return "year, month, day";
    }
    return {};
}

std::string_view WordOfSeparator(char separator)
{
    switch (separator) {
    case '\t':
        return "tab";
    case ';':
        return "semicolon";
    case ',':
        return "comma";
    case '|':
        return "bar";
    default:
        return "none";
    }
}

} // namespace orrery::exchange
