#include "exchange/ics/ics_writer.h"

#include "holidays/language/holiday_choice.h"
#include "util/text.h"
#include "util/unicode.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>
#include <tuple>

namespace orrery::exchange {
namespace {

using holidays::Date;

constexpr std::size_t kLongestLine = 75; // octets without the end, RFC 5545 3.1

/// Days in a row.
struct IcsEvent {
    Date first;
    Date last;
    const IcsHoliday* day = nullptr; ///< the first
};

/// "20270328".
std::string BasicDate(Date date)
{
    const std::chrono::year_month_day parts(date);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d%02u%02u", static_cast<int>(parts.year()),
                  static_cast<unsigned>(parts.month()), static_cast<unsigned>(parts.day()));
    return text.data();
}

/// FNV-1a with 64 bits, as 16 digits. It stays the same everywhere and for ever.
std::string HashOf(std::string_view text)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    std::string digits;
    for (int shift = 60; shift >= 0; shift -= 4)
        digits += "0123456789abcdef"[hash >> static_cast<unsigned>(shift) & 0xFU];
    return digits;
}

/// A value of the kind TEXT (RFC 5545 3.3.11).
std::string TextValue(std::string_view text)
{
    std::string value;
    for (std::size_t at = 0; at < text.size();) {
        const char32_t character = util::NextCharacter(text, at);
        if (character == U'\\' || character == U';' || character == U',')
            value += '\\';
        util::AppendUtf8(value, character < U' ' || character == 0x7F ? U' ' : character);
    }
    return value;
}

/// Appends a line, folded between characters.
void AddFolded(std::string_view line, std::string& text)
{
    std::size_t room = kLongestLine;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t begin = at;
        util::NextCharacter(line, at);
        if (at - begin > room) {
            text += "\r\n ";
            room = kLongestLine - 1;
        }
        text += line.substr(begin, at - begin);
        room -= at - begin;
    }
    text += "\r\n";
}

/// "Public".
std::string KindName(holidays::Category category)
{
    std::string name(holidays::WordOf(category));
    name.front() = util::ToUpperAscii(name.substr(0, 1)).front();
    return name;
}

/// Sorts the days by source and name, and joins those in a row.
std::vector<IcsEvent> JoinDays(std::vector<IcsHoliday>& days)
{
    std::stable_sort(days.begin(), days.end(), [](const IcsHoliday& a, const IcsHoliday& b) {
        return std::tie(a.source, a.name, a.date) < std::tie(b.source, b.name, b.date);
    });
    std::vector<IcsEvent> events;
    for (const IcsHoliday& day : days) {
        const bool isSame = !events.empty() && events.back().day->name == day.name &&
                            events.back().day->source == day.source;
        if (isSame && day.date <= events.back().last + std::chrono::days(1))
            events.back().last = std::max(events.back().last, day.date);
        else
            events.push_back({day.date, day.date, &day});
    }
    std::stable_sort(events.begin(), events.end(),
                     [](const IcsEvent& a, const IcsEvent& b) { return a.first < b.first; });
    return events;
}

void AddEvent(const IcsEvent& event, std::string& text)
{
    const std::string first = BasicDate(event.first);
    AddFolded("BEGIN:VEVENT", text);
    AddFolded("UID:" + first + '-' + HashOf(event.day->source + '\n' + event.day->name) + "@orrery",
              text);
    AddFolded("DTSTAMP:" + first + "T000000Z", text); // not the clock's: the bytes stay the same
    AddFolded("DTSTART;VALUE=DATE:" + first, text);
    AddFolded("DTEND;VALUE=DATE:" + BasicDate(event.last + std::chrono::days(1)), text);
    AddFolded("SUMMARY:" + TextValue(event.day->name), text);
    AddFolded("CATEGORIES:Holiday," + KindName(event.day->category), text);
    AddFolded("TRANSP:TRANSPARENT", text);
    AddFolded("END:VEVENT", text);
}

} // namespace

std::string IcsText(const std::string& calendarName, std::vector<IcsHoliday> days)
{
    std::string text;
    AddFolded("BEGIN:VCALENDAR", text);
    AddFolded("VERSION:2.0", text);
    AddFolded("PRODID:-//Orrery//Holidays//EN", text);
    AddFolded("CALSCALE:GREGORIAN", text);
    AddFolded("X-WR-CALNAME:" + TextValue(calendarName), text);
    for (const IcsEvent& event : JoinDays(days))
        AddEvent(event, text);
    AddFolded("END:VCALENDAR", text);
    return text;
}

} // namespace orrery::exchange
