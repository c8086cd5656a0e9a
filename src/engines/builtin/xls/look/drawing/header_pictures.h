#pragma once

#include "book/look/header_picture.h"
#include "engines/builtin/xls/look/drawing/pictures.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The pictures of the headers and footers of the sheet whose BOF record is at `begin` of the
/// workbook stream. `pictures` are those of the workbook's group for them. Never throws for what
/// the records contain: what cannot be read is not there, and `unreadable` counts it.
std::vector<book::HeaderPicture> ReadHeaderPictures(std::string_view stream, std::size_t begin,
                                                    Pictures& pictures, std::size_t& unreadable);

} // namespace orrery::xls
