#include "exchange/ics/plugin/rule_text.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace orrery::exchange {
namespace {

struct ListLimit {
    std::string_view name;
    std::ptrdiff_t most;
};
/// How many different values there are, of weekdays those of a month from both its ends.
constexpr std::array kLimits = {
    ListLimit{"BYSECOND", 60}, ListLimit{"BYMINUTE", 60},   ListLimit{"BYHOUR", 24},
    ListLimit{"BYDAY", 77},    ListLimit{"BYMONTHDAY", 31}, ListLimit{"BYYEARDAY", 366},
    ListLimit{"BYWEEKNO", 53}, ListLimit{"BYMONTH", 12},    ListLimit{"BYSETPOS", 366}};
constexpr std::size_t kLongestRule = 4096;

bool StartsWith(std::string_view text, std::string_view capitals)
{
    return text.size() >= capitals.size() &&
           std::equal(capitals.begin(), capitals.end(), text.begin(), [](char a, unsigned char b) {
               return a == static_cast<char>(std::toupper(b));
           });
}

bool IsOverlong(std::string_view part)
{
    return std::any_of(kLimits.begin(), kLimits.end(), [&](const ListLimit& limit) {
        return StartsWith(part, limit.name) && part.size() > limit.name.size() &&
               part[limit.name.size()] == '=' &&
               std::count(part.begin(), part.end(), ',') >= limit.most;
    });
}

/// Whether the interval has more than 16 bits, of which libical would take the last.
bool IsLargeInterval(std::string_view part)
{
    constexpr std::string_view name = "INTERVAL=";
    constexpr int largest = 32'767;
    if (!StartsWith(part, name))
        return false;
    int value = 0;
    for (const char digit : part.substr(name.size())) {
        value = value * 10 + (digit - '0');
        if (digit < '0' || digit > '9' || value > largest)
            return digit >= '0' && digit <= '9';
    }
    return false;
}

bool IsOutOfBounds(std::string_view line)
{
    if (!StartsWith(line, "RRULE"))
        return false;
    if (line.size() > kLongestRule)
        return true;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t end = std::min(line.find_first_of(";:", at), line.size());
        if (const auto part = line.substr(at, end - at); IsOverlong(part) || IsLargeInterval(part))
            return true;
        at = end + 1;
    }
    return false;
}

} // namespace

bool DropRulesOutOfBounds(std::string_view text, std::string& copy)
{
    bool isDropped = false;
    copy.clear();
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end == std::string_view::npos ? end : end + 1);
        if (IsOutOfBounds(line))
            isDropped = true;
        else
            copy += line;
        text.remove_prefix(line.size());
    }
    return isDropped;
}

} // namespace orrery::exchange
