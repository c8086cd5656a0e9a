#pragma once

#include "look/evaluate/functions/call/context.h"
#include "look/evaluate/values/convert.h"
#include "look/evaluate/values/value.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::formula {

/// The arguments of a function. What reads them notes the first error, which then is the result.
class Call {
public:
    Call(Context& owner, std::vector<Operand> given) : context(owner), arguments(std::move(given))
    {
    }

    std::size_t Count() const { return arguments.size(); }
    /// Whether the argument is there; one left out between commas is not.
    bool Has(std::size_t at) const
    {
        return at < arguments.size() && !std::holds_alternative<Missing>(arguments[at]);
    }

    // Of arguments that are single values. An argument that is not there is the last parameter.
    Value Single(std::size_t at) const;
    double Number(std::size_t at, double absent = 0);
    double Whole(std::size_t at, double absent = 0); ///< rounded down
    std::string Text(std::size_t at, std::string_view absent = "");
    bool Logical(std::size_t at, bool absent = false);

    const Reference* AsReference(std::size_t at) const;
    const Array* AsArray(std::size_t at) const; ///< nullptr if it is no table
    /// The argument as a table of at least one value; of a reference its first area.
    ArrayPointer Table(std::size_t at);
    /// The same for a function that goes through all of it: counts as many steps. One value if
    /// there are not so many left.
    ArrayPointer WholeTable(std::size_t at);

    /// Where a value stands.
    enum class Source { Direct, Array, Cell };
    /// Calls for each value of an argument that is not empty, until the call returns false. An
    /// argument that is a single empty value is 0. What stands for the rest of whole columns comes
    /// as often as it stands there; but once if it is an error or a logical value, which tables
    /// hold to be passed over.
    void ForEach(std::size_t at, const std::function<bool(const Value&, Source)>& take);
    /// The numbers of the arguments from one on, as most statistics take them: texts and logical
    /// values count only if they are arguments themselves.
    std::vector<double> Numbers(std::size_t from = 0,
                                std::size_t count = static_cast<std::size_t>(-1));
    /// Likewise, but texts are 0 and logical values 0 or 1 wherever they stand.
    std::vector<double> NumbersOfAll(std::size_t from = 0);

    double Convert(const Value& value);
    book::DateSystem Dates() const { return context.Rules().system; }
    void Fail(CellError error)
    {
        if (!failure)
            failure = error;
    }
    /// Fails unless the condition holds.
    bool Require(bool condition, CellError error = CellError::Number)
    {
        if (!condition)
            Fail(error);
        return condition;
    }

    Context& context;
    std::vector<Operand> arguments;
    std::optional<CellError> failure;
};

/// How a parameter takes its argument.
/// v: one value; a table makes the function give a table.
/// r: a reference, a table or a value, as it comes.
/// a: likewise, and operators in it work on tables.
struct FunctionEntry {
    using ValueFunction = Value (*)(Call&);
    using OperandFunction = Operand (*)(Call&);

    FunctionEntry(std::string_view entry, std::string_view letters, ValueFunction function,
                  int again = 0)
        : name(entry), parameters(letters), value(function), repeated(again)
    {
    }
    FunctionEntry(std::string_view entry, std::string_view letters, OperandFunction function,
                  int again = 0)
        : name(entry), parameters(letters), operand(function), repeated(again)
    {
    }
    std::string_view name;
    std::string_view parameters; ///< letters as above; behind "|" they may be left out
    ValueFunction value = nullptr;
    OperandFunction operand = nullptr; ///< or this one
    int repeated = 0;                  ///< so many of the last parameters may come again
};
using FunctionList = std::vector<FunctionEntry>;

/// A table of one row or column.
Operand MakeTable(Array array);
/// A number, or #NUM! if it is none.
Value NumberOrError(double number);
/// A number, or the error if there is none.
Value NumberOr(const std::optional<double>& number, CellError error);

} // namespace orrery::formula
