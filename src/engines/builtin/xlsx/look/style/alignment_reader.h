#pragma once

#include "book/look/cell_style.h"
#include "engines/builtin/xml/scanner.h"

namespace orrery::xlsx {

/// Reads the attributes of an <alignment>. ECMA-376 18.8.1
book::Alignment ReadAlignment(const xml::Scanner& scanner);

} // namespace orrery::xlsx
