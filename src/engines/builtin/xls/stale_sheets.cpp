#include "engines/builtin/xls/stale_sheets.h"

#include "engines/builtin/edit/recalculation.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace orrery::xls {
namespace {

using edit::SheetReads;

/// The template's formulas refer to its own sheets, never to a copy.
SheetReads ReadsOf(const FormulaFacts& facts, const Globals& globals,
                   const std::vector<std::size_t>& positions)
{
    const auto isOwn = [&globals](std::uint16_t link) {
        return link < globals.Links().size() && globals.Links()[link].book == globals.OwnBook();
    };
    SheetReads reads;
    reads.everything = facts.readsElsewhere || !facts.names.empty() ||
                       std::any_of(facts.externNames.begin(), facts.externNames.end(), isOwn);
    for (const auto link : facts.sheets) {
        const auto span = globals.OwnSheets(link);
        if (!span)
            continue;
        reads.everything = reads.everything || span->first != span->last;
        reads.sheets.push_back(positions.at(static_cast<std::size_t>(span->first)));
    }
    return reads;
}

} // namespace

std::vector<bool> FindStaleSheets(const Globals& globals, std::vector<TemplateSheet>& originals,
                                  const std::vector<SavedSheet>& sheets, std::vector<bool> written)
{
    const auto positions = PositionsOfOriginals(sheets);
    const auto readsOf = [&](std::size_t i) {
        auto& original = originals[sheets[i].Origin];
        return original.IsWorksheet() && original.Facts().hasFormulas
                   ? ReadsOf(original.Facts(), globals, positions)
                   : SheetReads();
    };
    auto stale = edit::PropagateChanges(std::move(written), readsOf);
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        auto& original = originals[sheets[i].Origin];
        stale[i] = stale[i] && original.IsWorksheet() && original.Facts().hasFormulas &&
                   original.IsIntact();
    }
    return stale;
}

} // namespace orrery::xls
