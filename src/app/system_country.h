#pragma once

#include <string>

namespace orrery::app {

/// The code of the country that the system is set to, ISO 3166-1, two letters; empty if it is
/// unknown.
std::string SystemCountry();

} // namespace orrery::app
