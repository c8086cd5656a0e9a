#include "engines/builtin/xlsx/look/cells/left_out_list.h"

#include "engines/builtin/xlsx/look/cells/limits.h"

#include <algorithm>

namespace orrery::xlsx {

void LeftOutList::Add(std::string_view what, std::string_view where, std::string_view reason)
{
    constexpr std::size_t kMaxWhere = 200;
    if (list_.size() >= kMaxLeftOut)
        return;
    book::LeftOut left{std::string(what), std::string(where.substr(0, kMaxWhere)),
                       std::string(reason)};
    if (std::find(list_.begin(), list_.end(), left) == list_.end())
        list_.push_back(std::move(left));
}

} // namespace orrery::xlsx
