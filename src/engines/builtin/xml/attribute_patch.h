#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xml {

using builtin::TextPatch;

/// The value, escaped to replace the attribute value at `valueBegin`, whichever quotes enclose that
/// one.
std::string EncodeAttributeAt(std::string_view xml, std::size_t valueBegin, std::string_view value);

/// Sets an attribute of the element at offset `element`; one that is missing is added. `xml` is
/// known to be well-formed.
void SetAttribute(TextPatch& patch, std::string_view xml, std::size_t element,
                  std::string_view name, std::string_view value);

} // namespace orrery::xml
