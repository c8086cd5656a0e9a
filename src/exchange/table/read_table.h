#pragma once

#include "exchange/event.h"
#include "exchange/table/table_layout.h"
#include "exchange/table/table_text.h"

namespace orrery::exchange {

/// The events of a table's rows. Rows that are none are passed over.
Calendar ReadTable(const TableText& text, const TableLayout& layout);

} // namespace orrery::exchange
