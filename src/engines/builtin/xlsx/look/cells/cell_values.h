#pragma once

#include "engines/builtin/xlsx/look/cells/sheet_context.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace orrery::xlsx {

/// What a cell's `t` says of its value. ECMA-376 18.18.11
enum class ValueType : std::uint8_t {
    Number,
    Shared,
    Text, ///< of a formula
    Inline,
    Logical,
    Error,
    Date
};
ValueType ValueTypeOf(std::string_view word);

/// Turns the values of a sheet's cells into contents.
class CellValues {
public:
    explicit CellValues(SheetContext& context) : context_(context) {}

    /// Sets the content from the decoded text of a <v>.
    void Set(book::Cell& cell, ValueType type, std::string_view text);
    /// Reads an <is> to its end.
    void ReadInline(xml::Scanner& scanner, book::Cell& cell);

private:
    void SetShared(book::Cell& cell, std::string_view text);
    void SetText(book::Cell& cell, std::string text);
    std::int32_t AddRuns(std::vector<book::TextRun> runs);

    SheetContext& context_;
    std::size_t bytes_ = 0; ///< of all texts
    std::size_t runs_ = 0;  ///< of all rich texts
    /// Rich texts by the shared text and the style.
    std::unordered_map<std::uint64_t, std::int32_t> richTexts_;
};

} // namespace orrery::xlsx
