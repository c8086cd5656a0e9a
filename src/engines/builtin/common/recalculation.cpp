#include "engines/builtin/common/recalculation.h"

#include <algorithm>

namespace orrery::builtin {

std::vector<bool>
SpreadChanges(std::vector<bool> changed,
              const std::function<bool(std::size_t sheet, const std::vector<bool>& changed)>& reads)
{
    bool found = std::find(changed.begin(), changed.end(), true) != changed.end();
    while (found) {
        found = false;
        for (std::size_t i = 0; i < changed.size(); ++i) {
            if (!changed[i] && reads(i, changed))
                found = changed[i] = true;
        }
    }
    return changed;
}

} // namespace orrery::builtin
