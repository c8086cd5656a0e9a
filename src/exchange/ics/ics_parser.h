#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The interface between the program and the library that parses the events of iCalendar files.
/// Both are built together; no exception passes between them, and each frees what it made.
namespace orrery::exchange {

/// From a first to a last day, each counted from 1 January 1970.
struct DayRange {
    std::int32_t first = 0;
    std::int32_t last = 0;
    friend auto operator<=>(const DayRange&, const DayRange&) = default;
};

/// When an event comes again every year, as a holiday rule can say it.
struct YearlyDay {
    enum class Kind { None, Date, Weekday, LeapDay };
    Kind kind = Kind::None;
    int month = 0;     ///< [1:12]
    int day = 0;       ///< [1:31] of a date
    int weekday = 0;   ///< 1 Sunday to 7 Saturday
    int ordinal = 0;   ///< of the weekday: 1 to 4; 5 is the last
    int firstYear = 0; ///< [1:9999]
    int lastYear = 0;  ///< [1:9999]; 9999 means that it goes on
};

/// What a component says. Texts are UTF-8 and, like the days, valid until the next one is parsed.
struct ParsedEvent {
    std::string_view problem; ///< why it is not taken over, a sentence; empty if it is
    std::string_view loss;    ///< what of it is not taken over, a sentence or empty
    std::string_view name;
    std::string_view uid;
    const DayRange* days = nullptr; ///< in order
    std::size_t dayCount = 0;
    YearlyDay yearly;
    int born = 0; ///< a year, or 0
    bool isRepeated = false;
    bool isOverride = false;      ///< it replaces what another event of its UID has on a day
    bool isCancelled = false;     ///< it is not taken over, and may be an override
    std::int32_t replacedDay = 0; ///< the day
};

/// Parses components, each a text of lines from BEGIN to END.
class IcsParser {
public:
    virtual ~IcsParser() = default;
    /// Takes a VTIMEZONE. False if it is not understood, or one too many: then its times count as
    /// they are written.
    virtual bool AddZone(std::string_view text) = 0;
    /// Parses a VEVENT.
    virtual const ParsedEvent& Parse(std::string_view text) = 0;
};

/// The exported function that makes a parser, which gives the days of events that come again in the
/// years [1:9999] from a first to a last one, and its type. The caller deletes the parser; null if
/// there is no memory.
inline constexpr const char* kIcsFunction = "OrreryIcsParser";
using IcsFunction = IcsParser* (*)(int firstYear, int lastYear);

} // namespace orrery::exchange
