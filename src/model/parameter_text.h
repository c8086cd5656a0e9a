#pragma once

#include "model/name_lists.h"
#include "model/parameter_reading.h"
#include "model/parameters.h"

#include <string>
#include <string_view>

namespace orrery::model {

// The text of a parameter file: the sections "[Monthly Calendar]" and "[Yearly Calendar]", spelled
// exactly so, with "Key=value" lines, in which the case of keys is ignored; and "[Holidays]" with
// the keys "Region", "Kinds" and "Language", each behind "Monthly" or "Yearly", if there is any.

/// Applies the lines to the sets, in order, and adds unknown name lists to the tables. A holiday
/// rule with a number that is too large, and a name list that no longer fits, end the reading;
/// everything before them stays applied.
ParameterReading ApplyParameterText(std::string_view text, NameTables& names, ParameterSets& sets);

/// Formats both sets with their keys in a fixed order. Extra rules follow the holidays of their
/// section, other sections follow both, and what was not read is last. Lines end in CR LF on every
/// system because the file travels with its template. Throws OutOfRangeError for an index outside
/// the tables of names.
std::string FormatParameterText(const NameTables& names, const ParameterSets& sets,
                                const ParameterExtras& extras = {});

} // namespace orrery::model
