#pragma once

#include "look/evaluate/values/number_text.h"
#include "look/evaluate/values/value.h"

#include <optional>
#include <string>
#include <variant>

namespace orrery::formula {

/// A value of a type, or the error that stands for it.
template <class Type> struct Converted {
    Type value{};
    std::optional<CellError> error;
};

/// Nothing is 0, a logical value 0 or 1; a text must be that of a number.
Converted<double> ToNumber(const Value& value, const TextRules& rules);
/// Nothing is "", a logical value "TRUE" or "FALSE".
Converted<std::string> ToText(const Value& value);
/// A number is true unless it is 0; of texts only "TRUE" and "FALSE" are logical.
Converted<bool> ToLogical(const Value& value);

} // namespace orrery::formula
