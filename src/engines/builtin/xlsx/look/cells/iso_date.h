#pragma once

#include "book/date_system.h"

#include <optional>
#include <string_view>

namespace orrery::xlsx {

/// The number of a date that a cell holds as a text: "2026-11-23", "2026-11-23T18:30:00.5Z",
/// "18:30:00" (a share of a day); nothing for others. ECMA-376 18.17.4.3
std::optional<double> ParseIsoDate(std::string_view text, book::DateSystem system);

} // namespace orrery::xlsx
