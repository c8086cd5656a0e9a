#pragma once

#include "engines/builtin/xml/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::xml {

/// The XML declaration: <?xml version="1.0" encoding="UTF-8" standalone="yes"?>. The last two
/// attributes are optional.
struct Declaration {
    std::optional<TextRange> encoding; ///< the name between its quotes
    std::size_t end = 0;               ///< offset after the declaration
};

/// The declaration that the text begins with; nothing if there is none or it is not well-formed.
/// [XML] 2.8
std::optional<Declaration> ReadDeclaration(std::string_view text);

} // namespace orrery::xml
