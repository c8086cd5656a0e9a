#pragma once

#include <string>
#include <string_view>

namespace orrery::excel {

/// The application takes a text as if its user had typed it: "01" becomes a number, "1. Mai" a
/// date, "=x" a formula, and what it takes it for depends on its language. Returns what has to be
/// typed so that the cell holds exactly this text (UTF-8): the text itself where no language takes
/// it for anything else, else the text behind an apostrophe, which the cell does not show. An empty
/// text stays empty.
std::string TypedAsText(std::string_view text);

} // namespace orrery::excel
