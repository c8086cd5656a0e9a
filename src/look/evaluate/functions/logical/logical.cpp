#include "look/evaluate/functions/logical/logical.h"

namespace orrery::formula {
namespace {

struct Truths {
    std::size_t all = 0;
    std::size_t yes = 0;
};

/// Texts in cells do not count; those that are arguments must be logical.
Truths CountTruths(Call& call)
{
    Truths truths;
    const auto count = [&](bool is) {
        ++truths.all;
        truths.yes += is ? 1U : 0U;
    };
    for (std::size_t at = 0; at < call.Count(); ++at) {
        if (!call.Has(at))
            count(false);
        call.ForEach(at, [&](const Value& value, Call::Source source) {
            const bool isText = std::holds_alternative<std::string>(value);
            if (isText && source != Call::Source::Direct)
                return true;
            const auto converted = ToLogical(value);
            if (converted.error)
                call.Fail(*converted.error);
            count(converted.value);
            return !call.failure;
        });
    }
    call.Require(truths.all > 0, CellError::Value);
    return truths;
}

} // namespace

const FunctionList& LogicalFunctions()
{
    static const FunctionList kFunctions = {
        {"AND", "r",
         [](Call& call) -> Value {
             const Truths truths = CountTruths(call);
             return truths.yes == truths.all;
         },
         1},
        {"OR", "r", [](Call& call) -> Value { return CountTruths(call).yes > 0; }, 1},
        {"XOR", "r", [](Call& call) -> Value { return CountTruths(call).yes % 2 == 1; }, 1},
        {"NOT", "v", [](Call& call) -> Value { return !call.Logical(0); }},
        {"TRUE", "", [](Call&) -> Value { return true; }},
        {"FALSE", "", [](Call&) -> Value { return false; }},
    };
    return kFunctions;
}

} // namespace orrery::formula
