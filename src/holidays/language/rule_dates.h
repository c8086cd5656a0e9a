#pragma once

#include "holidays/language/rule.h"

#include <map>
#include <vector>

namespace orrery::holidays {

/// Finds the dates of rules in one to three years. Years of calendars that go by the sky are
/// computed once.
class DateFinder {
public:
    DateFinder(int firstYear, int lastYear) : firstYear_(firstYear), lastYear_(lastYear) {}

    /// The dates of a rule's day whose own day, before the shift, is in a year of the finder's; in
    /// order. Days between holidays have none of their own. Throws nothing: a date that does not
    /// exist is left out.
    std::vector<Date> DatesOf(const RuleDay& day, int year);

private:
    friend class DatesOfKind;
    const calendars::CalendarSpan& SpanOf(calendars::Calendar calendar);

    int firstYear_;
    int lastYear_;
    std::map<calendars::Calendar, calendars::CalendarSpan> spans_;
};

/// Whether such dates are computed for a calendar whose days are announced.
bool IsEstimate(const RuleKind& kind);

} // namespace orrery::holidays
