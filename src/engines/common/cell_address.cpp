#include "engines/common/cell_address.h"

#include "book/error.h"
#include "util/error.h"

#include <string>

namespace orrery::engines {

void ThrowOutsideSheet(std::int32_t row, std::int32_t column)
{
    throw util::Error(book::ErrorKind::CellOutsideSheet,
                      "row " + std::to_string(row) + ", column " + std::to_string(column));
}

} // namespace orrery::engines
