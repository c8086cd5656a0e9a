#pragma once

#include <string_view>

namespace orrery::exchange {

/// What the header of a column can say.
enum class HeaderWord { Start, End, Name };

/// Whether a header has one of the words for that, in one of the larger languages: "End date",
/// "bis", "Sujet". Those of times do not count.
bool IsHeader(HeaderWord word, std::string_view header);

} // namespace orrery::exchange
