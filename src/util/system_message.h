#pragma once

#include <string>
#include <system_error>

namespace orrery::util {

/// The system's message for an error, in UTF-8, without a full stop or line break at the end.
std::string SystemMessage(const std::error_code& code);

/// Whether the code means that the disk is full or the user's quota is used up.
bool MeansDiskFull(const std::error_code& code);
/// The same for the error number of a C call.
inline bool MeansDiskFull(int errorNumber)
{
    return MeansDiskFull(std::error_code(errorNumber, std::generic_category()));
}

} // namespace orrery::util
