#pragma once

#include "book/look/sheet_look.h"

#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// Collects what is left out of a look: each once, and at most kMaxLeftOut.
class LeftOutList {
public:
    explicit LeftOutList(std::vector<book::LeftOut>& list) : list_(list) {}
    void Add(std::string_view what, std::string_view where, std::string_view reason);

private:
    std::vector<book::LeftOut>& list_;
};

} // namespace orrery::xlsx
