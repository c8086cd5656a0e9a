#pragma once

#include "look/evaluate/functions/call/context.h"

#include <cstdint>
#include <optional>

namespace orrery::formula {

/// A row or a column of a table.
struct Line {
    ArrayPointer array;
    bool isColumn = true;
    std::int32_t at = 0; ///< which row or column

    std::int32_t Size() const { return isColumn ? array->rows : array->columns; }
    const Value& At(std::int32_t index) const
    {
        return isColumn ? array->At(index, at) : array->At(at, index);
    }
};

// The index in the line, from 0.

/// The first equal value; with wildcards in a text the first that fits, if they count.
std::optional<std::int32_t> FindEqual(Context& context, const Line& line, const Value& wanted,
                                      bool hasPatterns = true);
/// The last value that is not above the wanted one, in a line that rises. Found by halving, so that
/// an unsorted line gives what Excel gives; values of other kinds are passed over.
std::optional<std::int32_t> FindNotAbove(Context& context, const Line& line, const Value& wanted);
/// The last value that is not below the wanted one, in a line that falls.
std::optional<std::int32_t> FindNotBelow(Context& context, const Line& line, const Value& wanted);

} // namespace orrery::formula
