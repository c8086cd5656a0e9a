#include "engines/builtin/xls/look/records/left_out.h"

#include <utility>

namespace orrery::xls {

void LeaveOut(book::SheetLook& look, std::string what, std::string where, std::string reason)
{
    constexpr std::size_t kMost = 200;
    if (look.leftOut.size() >= kMost)
        return;
    book::LeftOut left{std::move(what), std::move(where), std::move(reason)};
    if (look.leftOut.empty() || !(look.leftOut.back() == left))
        look.leftOut.push_back(std::move(left));
}

} // namespace orrery::xls
