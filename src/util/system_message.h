#pragma once

#include <string>
#include <system_error>

namespace orrery::util {

/// The system's own words for an error, UTF-8, without a full stop or line break at the end.
std::string SystemMessage(const std::error_code& code);

/// Whether the code says that no room is left on the disk or for its user.
bool MeansDiskFull(const std::error_code& code);
/// The same of the error number of a C call.
inline bool MeansDiskFull(int errorNumber)
{
    return MeansDiskFull(std::error_code(errorNumber, std::generic_category()));
}

} // namespace orrery::util
