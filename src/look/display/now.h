#pragma once

#include <ctime>

namespace orrery::look {

/// A moment in local time as spreadsheets count it: days since the 30th of December 1899.
double LocalSerial(std::time_t moment);

} // namespace orrery::look
