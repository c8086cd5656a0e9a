#pragma once

#include "exchange/event.h"
#include "exchange/table/table_text.h"

#include <string>
#include <string_view>
#include <vector>

namespace orrery::exchange {

/// Whether the first line that is not empty begins a section: "[Germany] 57".
bool IsHol(const TableText& text);

/// The names of the sections, in their order.
std::vector<std::string> HolSections(const TableText& text);

/// The holidays of a file in the form that Outlook reads: sections "[Country] number of lines" with
/// lines "name,yyyy/m/d". A comma in a name may have a backslash before it, or the name is in
/// quotes. Without a section all are read. Throws Error(NoSuchSection) for one that is not there;
/// capitals do not count.
Calendar ReadHol(const TableText& text, std::string_view section = {});

} // namespace orrery::exchange
