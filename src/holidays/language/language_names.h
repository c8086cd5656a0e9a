#pragma once

#include <string>
#include <string_view>

namespace orrery::holidays {

/// The English name of a language by its ISO 639-1 code, in any case: "German" of "de". A code that
/// is not known stays as it is.
std::string LanguageName(std::string_view code);

} // namespace orrery::holidays
