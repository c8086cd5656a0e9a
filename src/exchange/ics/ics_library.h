#pragma once

#include "exchange/event.h"
#include "exchange/ics/ics_parser.h"

#include <memory>

namespace orrery::exchange {

/// A parser for the events of iCalendar files. Loads the library when it is first needed. Throws
/// Error (IcsNotAvailable, IcsLibraryFailure).
std::unique_ptr<IcsParser> MakeIcsParser(Years years);

} // namespace orrery::exchange
