#include "util/code_page.h"
#include "util/wide.h"

#include <windows.h>

namespace orrery::util {

const bool kWritesCodePage = true;

std::string DecodeCodePage(std::string_view bytes)
{
    const int size = static_cast<int>(bytes.size());
    std::wstring wide(bytes.size(), L'\0'); // a byte never becomes more than one unit
    const int length = MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), size);
    wide.resize(static_cast<std::size_t>(length));
    return FromWide(wide);
}

std::optional<std::string> EncodeCodePage(std::string_view utf8)
{
    if (utf8.empty() || GetACP() == CP_UTF8)
        return std::string(utf8);
    const std::wstring wide = ToWide(utf8);
    const int units = static_cast<int>(wide.size());
    constexpr int kMaxBytes = 4; // per character, in any code page
    std::string bytes(wide.size() * kMaxBytes, '\0');
    BOOL missing = FALSE;
    const int length =
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), units, bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, &missing);
    if (missing != FALSE || length == 0)
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(length));
    return bytes;
}

} // namespace orrery::util
