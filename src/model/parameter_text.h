#pragma once

#include "model/name_lists.h"
#include "model/parameter_extras.h"
#include "model/parameters.h"

#include <string>
#include <string_view>

namespace orrery::model {

// The text of a parameter file: a section "[Monthly Calendar]" and a section "[Yearly Calendar]",
// spelled like this, with "Key=value" lines whose keys are spelled in any case.

/// Applies the lines over the sets, in order, and adds unknown name lists to the tables. Throws
/// Error at a line that cannot be finished; everything before it stays applied.
void ApplyParameterText(std::string_view text, NameTables& names, ParameterSets& sets);

/// Both sets with their keys in the fixed order, with the extras behind the holidays and behind
/// both sections; lines end in CR LF on every system because the file travels with its template.
/// Throws OutOfRangeError for the index of a list that no table has.
std::string FormatParameterText(const NameTables& names, const ParameterSets& sets,
                                const ParameterExtras& extras = {});

} // namespace orrery::model
