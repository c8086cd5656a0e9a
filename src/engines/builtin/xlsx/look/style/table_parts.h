#pragma once

#include "book/look/table.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace orrery::xlsx {

/// The part that a file calls so ("headerRow"); nothing for those that only pivot tables have.
/// ECMA-376 18.18.93
std::optional<book::TablePart> TablePartOf(std::string_view type);

/// The number of rows or columns of a stripe; nullptr for other parts.
std::int32_t* StripeOf(book::TableStyle& style, book::TablePart part);

} // namespace orrery::xlsx
