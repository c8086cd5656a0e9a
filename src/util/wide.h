#pragma once

#include "util/unicode.h"

#include <string>
#include <string_view>

namespace orrery::util {

// Wide strings of Windows calls are UTF-16.

inline std::wstring ToWide(std::string_view utf8)
{
    const std::u16string units = ToUtf16(utf8);
    return {units.begin(), units.end()};
}

inline std::string FromWide(std::wstring_view wide)
{
    return FromUtf16(std::u16string(wide.begin(), wide.end()));
}

} // namespace orrery::util
