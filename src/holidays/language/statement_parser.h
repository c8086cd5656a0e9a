#pragma once

#include "holidays/language/rule.h"
#include "util/error.h"

#include <optional>
#include <string_view>

namespace orrery::holidays {

/// Adds the statements of a refinement, without its ">", to what is known of a rule; semicolons
/// separate them, capitals do not count. Stops at the first that is not understood and returns why,
/// with the statement as the subject; what came before it stays.
///     "if Sat also Fri before; if Sun also Mon after"   "exact 1031 SAT ON OR AFTER"
///     "years 1990-1999 2004-"   "not years 2020"   "in 2018 on 1111 1112"   "not on Sun"
///     "only on Mon Tue"   "days 3"   "kind bank"   "only in BW BY"   "not in SN"   "born 1984"
///     "name de Tag der Arbeit"   "if holiday also next workday from 2014 called Substitute"
std::optional<util::Error> ParseStatements(std::string_view text, Refinements& refinements);

/// A rule's own refinements with those that hold for all rules around it: its own substitutes come
/// first, and what can be said once is the rule's own if it says it.
Refinements Merge(Refinements own, const Refinements& common);

} // namespace orrery::holidays
