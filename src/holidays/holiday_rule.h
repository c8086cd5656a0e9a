#pragma once

#include "util/error.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orrery::holidays {

// Rule kinds, as stored in HolidayDef::Kind.
inline constexpr std::int16_t kFixedDay = 0;     ///< DateCode is month x 100 + day
inline constexpr std::int16_t kFirstWeekday = 1; ///< Sunday; to 7, Saturday: month x 100 + ordinal
inline constexpr std::int16_t kLastWeekday = 7;
inline constexpr std::int16_t kEaster = 8; ///< DateCode is days from Easter Sunday

struct HolidayDef {
    std::int16_t DateCode = 0;
    std::int16_t Kind = 0;
    std::string Name; ///< as written in the rule, blanks included
    friend bool operator==(const HolidayDef&, const HolidayDef&) = default;
};

/// The word of each kind; fixed days have none.
inline constexpr std::array<std::string_view, kEaster + 1> kKindWords = {
    "", "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Easter"};

/// "0101": at least four digits after the sign; for an Easter rule just the number of days.
std::string FormatDateCode(const HolidayDef& rule);

/// A line that says more of the rules than three fields can: a rule of another kind, or a
/// refinement.
struct ExtraLine {
    std::int16_t place = 0; ///< how many rules stand above it
    std::string text;       ///< as written, without blanks around
    friend bool operator==(const ExtraLine&, const ExtraLine&) = default;
};

/// At most 1,025 rules, in file order, and the extra lines between them. The limit is kept on
/// purpose.
class HolidayList {
public:
    static constexpr std::int16_t kCapacity = 1025;
    static constexpr std::size_t kExtraCapacity = 8200;

    std::int16_t Count() const { return static_cast<std::int16_t>(rules_.size()); }
    const HolidayDef& operator[](std::size_t index) const { return rules_[index]; }
    auto begin() const { return rules_.begin(); }
    auto end() const { return rules_.end(); }
    bool IsFull() const { return Count() == kCapacity; }
    const std::vector<ExtraLine>& Extras() const { return extras_; }
    bool HasRoomForExtra() const { return extras_.size() < kExtraCapacity; }
    void Clear();
    /// Appends a rule; a full list ignores it.
    void Append(HolidayDef rule);
    /// Appends an extra line; a list with `kExtraCapacity` of them ignores it.
    void AppendExtra(std::string text);
    friend bool operator==(const HolidayList&, const HolidayList&) = default;

private:
    std::vector<HolidayDef> rules_;
    std::vector<ExtraLine> extras_;
};

/// A rule, or the text of an extra line.
using ListEntry = std::variant<HolidayDef, std::string>;

/// The line of a holiday file: "0830,DAY,Ben", and an extra line as it is.
std::string LineOf(const ListEntry& entry);

/// What a list has, in its order.
std::vector<ListEntry> EntriesOf(const HolidayList& list);
/// Appends entries; a full list ignores what has no room.
void AppendEntries(const std::vector<ListEntry>& entries, HolidayList& list);

/// Parses one rule line: date field, kind field and name, separated by commas. Blanks around the
/// first two fields do not count. For a line that is not a rule, gives an error of
/// `holidays::ErrorKind`; a number beyond its width and a DAY rule of month 0 end the reading of a
/// file. Throws nothing.
///     accepted: "0704, DAY, Independence Day"    ", EASTER MON, Easter Monday"
///     rejected: "2, HOLIDAY, x"                  "/* comment */"
std::variant<HolidayDef, util::Error> ParseHolidayLine(std::string_view line);

} // namespace orrery::holidays
