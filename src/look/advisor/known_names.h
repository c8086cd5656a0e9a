#pragma once

#include "model/name_lists.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

/// The lists of names that seven texts are, and the first day of their week.
struct WeekdayMatch {
    std::int16_t list = 0;
    std::int16_t firstDay = 0; ///< 0 Sunday, 1 Monday
};

/// The program's lists of names, compared as readers do: without case and final points.
class KnownNames {
public:
    /// The tables outlive the object.
    explicit KnownNames(const model::NameTables& names);

    /// Finds a list with the seven texts, the week beginning with Sunday or Monday.
    std::optional<WeekdayMatch> FindWeekdays(const std::vector<std::string>& texts) const;
    /// The first day of the week if the texts are the beginnings of names, the same in all lists
    /// that have such names.
    std::optional<std::int16_t> FindFirstDay(const std::vector<std::string>& texts) const;
    /// Whether a name of a weekday begins so.
    bool BeginsWeekday(std::string_view text) const;
    /// The lists with a month of that name; a year beside the name does not count.
    std::vector<std::int16_t> ListsWithMonth(std::string_view text) const;
    /// The month [1:12] that the text is in any list, or 0.
    std::int16_t MonthOf(std::string_view text) const;
    /// The list of the most months of twelve texts, if it has at least ten.
    std::optional<std::int16_t> FindMonths(const std::vector<std::string>& texts) const;
    /// Of lists of months, the first in the language of a list of weekdays.
    std::optional<std::int16_t> InLanguage(const std::vector<std::int16_t>& months,
                                           std::int16_t weekdays) const;

private:
    const model::NameTables& names_;
    std::vector<std::vector<std::string>> weekdays_; ///< folded
    std::vector<std::vector<std::string>> months_;
};

/// The text in lower case, without blanks and points at its ends.
std::string FoldName(std::string_view text);
/// FoldName without a year of four digits and what stands beside it.
std::string WithoutYear(std::string_view text);
/// The year of four digits [1900:2199] in a text, or nothing.
std::optional<std::int32_t> FindYear(std::string_view text);

} // namespace orrery::look
