#pragma once

#include "look/evaluate/values/convert.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::formula {

/// What the numbers of an area come to.
struct AreaSummary {
    double sum = 0;
    double minimum = 0;
    double maximum = 0;
    std::size_t numbers = 0;
    std::size_t values = 0;         ///< cells that are not empty
    std::optional<CellError> error; ///< the first one
};

/// What functions see of the workbook while a formula is computed.
class Context {
public:
    virtual ~Context() = default;

    virtual const TextRules& Rules() const = 0;
    virtual std::size_t OwnSheet() const = 0;
    virtual book::CellAddress OwnCell() const = 0;

    virtual Value ValueAt(std::size_t sheet, book::CellAddress cell) = 0;
    /// Calls for each cell that is not empty, sheet by sheet, row by row, until the call returns
    /// false.
    virtual void
    ForEachCell(const Area& area,
                const std::function<bool(std::size_t, book::CellAddress, const Value&)>& take) = 0;
    /// The values of an area of one sheet. Of whole rows and columns the used
    /// part and one more, as `Array` tells.
    virtual ArrayPointer ValuesOf(const Area& area) = 0;
    virtual const AreaSummary& Summarize(const Area& area) = 0;
    /// How often each value stands in an area. Errors and empty cells do not count.
    virtual std::size_t CountOf(const Area& area, const Value& value) = 0;
    /// The index from 0 of the first of a row's or column's values that is equal.
    virtual std::optional<std::int32_t> IndexOf(const ArrayPointer& array, bool isColumn,
                                                std::int32_t at, const Value& value) = 0;

    /// A reference that a text holds, "Sheet1!A1:B2" or a name.
    virtual std::optional<Reference> ReadReference(std::string_view text, bool isA1) = 0;
    virtual std::string SheetName(std::size_t sheet) = 0;
    virtual std::size_t SheetCount() = 0;
    /// The formula of a cell without "=", or nothing.
    virtual std::optional<std::string> FormulaAt(std::size_t sheet, book::CellAddress cell) = 0;
    virtual bool IsRowHidden(std::size_t sheet, std::int32_t row) = 0;
    /// A value as a number format's code shows it.
    virtual Converted<std::string> Format(const Value& value, std::string_view code) = 0;

    /// Counts work. False: the limit is reached, and the result does not count any more.
    virtual bool Spend(std::size_t steps) = 0;
    /// The formula cannot be computed: whatever the function returns does not count.
    virtual void GiveUp() = 0;
};

/// What working with a text counts in steps, beside one for each value.
inline std::size_t StepsOfText(std::size_t bytes)
{
    return bytes / 32;
}

/// The largest table, and the longest text, that a function makes.
inline constexpr std::int64_t kLargestArray = 1'048'576;
inline constexpr std::size_t kLongestText = 32'767;

} // namespace orrery::formula
