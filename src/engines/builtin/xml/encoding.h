#pragma once

#include <string>
#include <string_view>

namespace orrery::xml {

/// The text of an XML part in UTF-8, from UTF-8, UTF-16 of either byte order, ISO-8859-1 or
/// Windows-1252. A byte-order mark is dropped; a converted text declares UTF-8. Throws
/// Error(DamagedWorkbook) for other encodings and for bytes that are invalid in theirs.
std::string DecodePart(std::string bytes, std::string_view partName);

} // namespace orrery::xml
