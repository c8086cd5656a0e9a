#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::zip {

/// The content of the first extra field of that kind in an entry's header; nothing if there is
/// none. [APPNOTE] 4.5.1
std::optional<std::string_view> FindExtraField(std::string_view extra, std::uint16_t kind);

/// The name of an entry in UTF-8, from the name, the extra fields and the flags of its header.
/// Names beyond ASCII may be in UTF-8, in code page 437, or in an extra field. Nothing if readers
/// could see different names: with control characters, or another name in an extra field than a
/// name in ASCII. [APPNOTE] 4.4.4, 4.6.9, appendix D
std::optional<std::string> DecodeName(std::string_view name, std::string_view extra,
                                      std::uint16_t flags);

} // namespace orrery::zip
