#pragma once

#include "util/fixed_text.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::builtin {

/// What files call the values of an enumeration.
template <typename Value> struct Word {
    util::FixedText<23> text;
    Value value{};
};
template <typename Value, std::size_t N> using Words = std::array<Word<Value>, N>;

/// The value of that name, or nothing.
template <typename Value, std::size_t N>
std::optional<Value> ValueOfWord(const Words<Value, N>& words, std::string_view text)
{
    for (const auto& word : words) {
        if (word.text == text)
            return word.value;
    }
    return std::nullopt;
}

} // namespace orrery::builtin
