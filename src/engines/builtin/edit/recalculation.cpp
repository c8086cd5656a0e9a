#include "engines/builtin/edit/recalculation.h"

#include <algorithm>

namespace orrery::edit {

std::vector<bool> PropagateChanges(std::vector<bool> changed,
                                   const std::function<SheetReads(std::size_t sheet)>& readsOf)
{
    if (std::find(changed.begin(), changed.end(), true) == changed.end())
        return changed;
    std::vector<std::vector<std::size_t>> readers(changed.size()); // by the sheet that is read
    std::vector<std::size_t> open; // changed sheets whose readers have not been visited
    for (std::size_t i = 0; i < changed.size(); ++i) {
        if (!changed[i]) {
            const SheetReads reads = readsOf(i);
            changed[i] = reads.everything;
            for (const std::size_t sheet : reads.sheets)
                readers[sheet].push_back(i);
        }
        if (changed[i])
            open.push_back(i);
    }
    while (!open.empty()) {
        const std::size_t sheet = open.back();
        open.pop_back();
        for (const std::size_t reader : readers[sheet]) {
            if (!changed[reader]) {
                changed[reader] = true;
                open.push_back(reader);
            }
        }
    }
    return changed;
}

} // namespace orrery::edit
