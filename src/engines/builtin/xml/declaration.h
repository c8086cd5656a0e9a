#pragma once

#include "engines/builtin/xml/text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::xml {

/// What a text begins with: <?xml version="1.0" encoding="UTF-8" standalone="yes"?>. The last two
/// are optional.
struct Declaration {
    std::optional<TextRange> encoding; ///< the name between its quotes
    std::size_t end = 0;               ///< offset behind the declaration
};

/// Nothing where the text begins with something else, or with a declaration that is not
/// well-formed. [XML] 2.8
std::optional<Declaration> ReadDeclaration(std::string_view text);

} // namespace orrery::xml
