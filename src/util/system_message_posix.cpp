#include "util/system_message.h"

#include <cerrno>

namespace orrery::util {

std::string SystemMessage(const std::error_code& code)
{
    return code.message();
}

bool MeansDiskFull(int errorNumber)
{
    return errorNumber == ENOSPC || errorNumber == EDQUOT;
}

} // namespace orrery::util
