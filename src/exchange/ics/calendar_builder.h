#pragma once

#include "exchange/event.h"
#include "exchange/ics/ics_parser.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace orrery::exchange {

/// Puts a calendar together from events as they come. Single days of an event that comes again may
/// be replaced by other events, which stand anywhere in the file.
class CalendarBuilder {
public:
    explicit CalendarBuilder(Years years) : years_(years) {}
    /// Takes an event that begins in that line of the file.
    void Add(const ParsedEvent& event, std::size_t line);
    void PassOver(std::size_t line, std::string reason);
    /// The calendar; call it once, at the end.
    Calendar Finish();

private:
    /// A day of an event, which is known by its UID.
    struct EventDay {
        std::size_t uid = 0; ///< its hash
        std::int32_t day = 0;
        friend auto operator<=>(const EventDay&, const EventDay&) = default;
    };
    struct Repeated {
        std::size_t uid = 0;   ///< its hash
        std::size_t event = 0; ///< index
    };

    void RemoveReplacedDays(const Repeated& repeated);
    std::string NoDays() const;

    Years years_;
    Calendar calendar_;
    std::size_t dayCount_ = 0;
    std::vector<Repeated> repeated_;
    std::vector<EventDay> replaced_;
};

} // namespace orrery::exchange
