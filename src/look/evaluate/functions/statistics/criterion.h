#pragma once

#include "look/evaluate/values/compare.h"
#include "look/evaluate/values/number_text.h"

#include <cstdint>
#include <optional>

namespace orrery::formula {

/// What a cell must be to count: 5, ">=5", "a*", "<>", "=TRUE".
class Criterion {
public:
    Criterion(const Value& criterion, const TextRules& rules);
    bool Matches(const Value& value) const;
    /// The value that a cell must equal, if nothing else matches: one that a table of values finds.
    const std::optional<Value>& PlainValue() const { return plain_; }

private:
    enum class Test : std::uint8_t { Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual };

    void ReadText(std::string_view text, const TextRules& rules);
    bool IsEqual(const Value& value) const;

    Test test_ = Test::Equal;
    Value operand_;
    bool isBlank_ = false;     ///< "=": only empty cells
    bool isEmptyText_ = false; ///< "": empty cells and empty texts
    std::optional<TextPattern> pattern_;
    std::optional<Value> plain_;
    TextRules rules_;
};

} // namespace orrery::formula
