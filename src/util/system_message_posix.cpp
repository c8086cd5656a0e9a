#include "util/system_message.h"

#include <cerrno>

namespace orrery::util {

std::string SystemMessage(const std::error_code& code)
{
    return code.message();
}

bool MeansDiskFull(const std::error_code& code)
{
    return code.value() == ENOSPC || code.value() == EDQUOT; // the same numbers in both categories
}

} // namespace orrery::util
