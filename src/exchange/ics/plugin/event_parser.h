#pragma once

#include "exchange/ics/ics_parser.h"
#include "exchange/ics/plugin/effort.h"
#include "exchange/ics/plugin/recurrence.h"
#include "exchange/ics/plugin/time_zones.h"

#include <string>
#include <vector>

namespace orrery::exchange {

/// Parses events with libical.
class EventParser final : public IcsParser {
public:
    EventParser(int firstYear, int lastYear);
    ~EventParser() override;
    EventParser(const EventParser&) = delete;
    EventParser& operator=(const EventParser&) = delete;
    bool AddZone(std::string_view text) override;
    const ParsedEvent& Parse(std::string_view text) override;

private:
    /// An event that is being parsed.
    struct Parts {
        icalcomponent* component = nullptr;
        ZonedTime start;
        ClockTime startTime = 0;
        ClockTime length = 0; ///< in seconds; days for dates
        bool isWrongRule = false;
    };

    void ParseComponent(icalcomponent* component, bool isWrongRule);
    bool ReadStart(Parts& parts);
    void ReadLength(Parts& parts);
    void ReadOverride(const Parts& parts);
    void ReadDays(const Parts& parts);
    void AddRuleTimes(const Parts& parts);
    void AddExtraTimes(const Parts& parts);
    void RemoveTimes(const Parts& parts);
    void ReadYearly(const Parts& parts);
    ZonedTime TimeOf(icalproperty* property, const icaltimetype& time) const;
    Repetition RepetitionOf(const Parts& parts, icalproperty* property) const;
    std::int32_t DayOfStart(const Parts& parts, ClockTime time) const;
    DayRange RangeOf(const Parts& parts, ClockTime time, ClockTime length) const;

    DayWindow years_;
    Effort effort_;
    TimeZones zones_;
    ParsedEvent event_;
    std::string problem_;
    std::string loss_;
    std::string name_;
    std::string uid_;
    std::vector<ClockTime> times_;
    std::vector<DayRange> extraDays_; ///< of periods that are as long as they say
    std::vector<DayRange> days_;
};

} // namespace orrery::exchange
