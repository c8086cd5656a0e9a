#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::vba {

/// The stream "\005DocumentSummaryInformation" without the digital signature of the macros, and as
/// long as before; nothing if there is none, or if the properties cannot be read.
/// [MS-OSHARED] 2.3.3.2.2.1, [MS-OLEPS] 2.21
std::optional<std::string> WithoutSignature(std::string_view properties);

} // namespace orrery::vba
