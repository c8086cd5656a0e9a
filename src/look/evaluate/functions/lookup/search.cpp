#include "look/evaluate/functions/lookup/search.h"

#include "look/evaluate/values/compare.h"

namespace orrery::formula {

std::optional<std::int32_t> FindEqual(Context& context, const Line& line, const Value& wanted,
                                      bool hasPatterns)
{
    const auto* text = std::get_if<std::string>(&wanted);
    if (text == nullptr || !hasPatterns || !HasWildcards(*text))
        return context.IndexOf(line.array, line.isColumn, line.at,
                               text != nullptr && hasPatterns ? Value(WithoutTildes(*text))
                                                              : wanted);
    const TextPattern pattern(*text);
    for (std::int32_t at = 0; at < line.Size() && context.Spend(1); ++at) {
        const auto* candidate = std::get_if<std::string>(&line.At(at));
        if (candidate != nullptr && pattern.Matches(*candidate))
            return at;
    }
    return std::nullopt;
}

std::optional<std::int32_t> FindNotAbove(Context& context, const Line& line, const Value& wanted)
{
    const auto isComparable = [&](std::int32_t at) {
        return line.At(at).index() == wanted.index();
    };
    std::int32_t low = 0;
    std::int32_t high = line.Size() - 1;
    std::optional<std::int32_t> found;
    while (low <= high) {
        const std::int32_t middle = low + (high - low) / 2;
        std::int32_t at = middle;
        while (at <= high && !isComparable(at))
            ++at;
        if (!context.Spend(1 + static_cast<std::size_t>(at - middle)))
            return std::nullopt;
        if (at > high) {
            high = middle - 1;
            continue;
        }
        const int order = CompareValues(line.At(at), wanted);
        if (order > 0) {
            high = middle - 1;
            continue;
        }
        found = at;
        low = at + 1;
        if (order == 0) { // the last of equal neighbours
            while (low <= high && isComparable(low) && CompareValues(line.At(low), wanted) == 0 &&
                   context.Spend(1))
                found = low++;
            return found;
        }
    }
    return found;
}

std::optional<std::int32_t> FindNotBelow(Context& context, const Line& line, const Value& wanted)
{
    std::optional<std::int32_t> found;
    for (std::int32_t at = 0; at < line.Size() && context.Spend(1); ++at) {
        if (line.At(at).index() != wanted.index())
            continue;
        const int order = CompareValues(line.At(at), wanted);
        if (order < 0)
            break;
        found = at;
        if (order == 0)
            break;
    }
    return found;
}

} // namespace orrery::formula
