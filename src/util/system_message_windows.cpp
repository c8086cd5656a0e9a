#include "util/system_message.h"
#include "util/wide.h"

#include <array>
#include <cerrno>
#include <windows.h>

namespace orrery::util {

std::string SystemMessage(const std::error_code& code)
{
    if (code.category() != std::system_category())
        return code.message();
    std::array<wchar_t, 1024> buffer = {};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, static_cast<DWORD>(code.value()), 0, buffer.data(),
                                        static_cast<DWORD>(buffer.size()), nullptr);
    std::string text = FromWide({buffer.data(), length});
    text.resize(text.find_last_not_of("\r\n .") + 1);
    return text.empty() ? "error " + std::to_string(code.value()) : text;
}

bool MeansDiskFull(const std::error_code& code)
{
    if (code.category() != std::system_category())
        return code.value() == ENOSPC;
    constexpr DWORD kDiskQuotaExceeded = 1295; // missing in some headers
    const auto number = static_cast<DWORD>(code.value());
    return number == ERROR_DISK_FULL || number == ERROR_HANDLE_DISK_FULL ||
           number == kDiskQuotaExceeded;
}

} // namespace orrery::util
