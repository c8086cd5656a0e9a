#pragma once

#include "util/unicode.h"

#include <string>
#include <string_view>

namespace orrery::automation {

/// UTF-16 for the system's calls.
inline std::wstring Wide(std::string_view utf8)
{
    const std::u16string units = util::ToUtf16(utf8);
    return {units.begin(), units.end()};
}

inline std::string Narrow(std::wstring_view text)
{
    return util::FromUtf16(std::u16string(text.begin(), text.end()));
}

} // namespace orrery::automation
