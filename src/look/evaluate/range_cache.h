#pragma once

#include "look/evaluate/functions/call/context.h"
#include "look/evaluate/values/compare.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <tuple>

namespace orrery::formula {

/// Remembers what was found about areas, so that many formulas over the same cells read them once.
/// When too much is kept, all is forgotten.
class RangeCache {
public:
    ArrayPointer FindValues(const Area& area) const;
    void KeepValues(const Area& area, const ArrayPointer& values);
    const AreaSummary* FindSummary(const Area& area) const;
    const AreaSummary& KeepSummary(const Area& area, const AreaSummary& summary);
    const KeyMap<std::size_t>* FindCounts(const Area& area) const;
    const KeyMap<std::size_t>& KeepCounts(const Area& area, KeyMap<std::size_t> counts);
    /// The first place of each value of a row or column.
    const KeyMap<std::int32_t>& Places(const ArrayPointer& array, bool isColumn, std::int32_t at);
    void Clear();

private:
    using AreaKey = std::tuple<std::size_t, std::size_t, book::CellAddress, book::CellAddress>;
    using LineKey = std::tuple<const Array*, bool, std::int32_t>;
    struct Line {
        ArrayPointer array; ///< keeps the address from being used again
        KeyMap<std::int32_t> places;
    };
    static AreaKey KeyOf(const Area& area)
    {
        return {area.firstSheet, area.lastSheet, area.range.first, area.range.last};
    }
    void MakeRoom(std::size_t values);

    std::map<AreaKey, ArrayPointer> values_;
    std::map<AreaKey, AreaSummary> summaries_;
    std::map<AreaKey, KeyMap<std::size_t>> counts_;
    std::map<LineKey, Line> lines_;
    std::size_t kept_ = 0; ///< values in all of them
};

} // namespace orrery::formula
