#pragma once

#include "exchange/event.h"

#include <filesystem>

namespace orrery::exchange {

/// Reads an iCalendar file (RFC 5545), UTF-8 or in the system's code page. An event counts on the
/// days of its own time zone, one in UTC on those of the user's. What is wrong or no event is
/// passed over. Memory does not grow with the file, but for the events themselves: at most 100,000.
/// Throws Error (NotIcs, IcsTooLarge, IcsNotAvailable, IcsLibraryFailure) and what `InputFile`
/// throws.
Calendar ReadIcs(const std::filesystem::path& path, Years years);

} // namespace orrery::exchange
