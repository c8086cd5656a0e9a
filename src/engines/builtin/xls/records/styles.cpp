#include "engines/builtin/xls/records/styles.h"

#include "engines/builtin/xls/compound/bytes.h"

namespace orrery::xls {

void Styles::Add(std::string_view data)
{
    // Font and number format come first. [MS-XLS] 2.4.353
    locked_.push_back((ReadU16(data, 4) & 1) != 0);
}

bool Styles::IsLocked(std::uint16_t format) const
{
    return format >= locked_.size() || locked_[format];
}

} // namespace orrery::xls
