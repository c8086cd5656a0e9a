#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::xml {

using builtin::TextPatch;

/// A value escaped for the place of the attribute value that begins at `valueBegin`, whichever
/// quotes stand there.
std::string EncodeAttributeAt(std::string_view xml, std::size_t valueBegin, std::string_view value);

/// Gives the element that begins at `element` an attribute, or another value for the one it has.
/// `xml` was found well-formed before.
void SetAttribute(TextPatch& patch, std::string_view xml, std::size_t element,
                  std::string_view name, std::string_view value);

} // namespace orrery::xml
