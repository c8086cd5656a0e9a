#pragma once

#include "look/evaluate/values/value.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orrery::formula {

/// Below 0, 0, above 0: numbers before texts before logical values before errors; nothing counts as
/// the other's 0, "" or FALSE. Texts without regard to case.
int CompareValues(const Value& left, const Value& right);
/// Texts without regard to case: punctuation before digits before letters.
int CompareTexts(std::string_view left, std::string_view right);

/// A pattern of texts: "?" is one character, "*" any, "~" makes the next one plain. Without regard
/// to case. One of more than 255 bytes fits nothing, as in Excel.
class TextPattern {
public:
    explicit TextPattern(std::string_view pattern);
    bool Matches(std::string_view text) const;
    /// The first place at or after `from` where a piece of the characters fits, or npos.
    std::size_t Find(std::u32string_view folded, std::size_t from) const;

private:
    /// A character that must be there, or a wildcard.
    struct Item {
        char32_t character = 0;
        bool isPlain = true;
    };
    bool IsStar(std::size_t item) const
    {
        return item < items_.size() && !items_[item].isPlain && items_[item].character == '*';
    }
    bool MatchesFrom(std::u32string_view folded, bool isWhole, bool& isHopeless) const;
    std::vector<Item> items_;
    bool isTooLong_ = false;
};
/// The characters of a text.
std::u32string ToCharacters(std::string_view text);
std::string FromCharacters(std::u32string_view characters);
bool HasWildcards(std::string_view pattern);
/// The pattern without its "~".
std::string WithoutTildes(std::string_view pattern);

/// Equal for values that are equal as keys of a lookup: of the same kind, and the same but for
/// case.
struct SameKey {
    bool operator()(const Value& left, const Value& right) const;
};
struct KeyHash {
    std::size_t operator()(const Value& value) const;
};
template <class Type> using KeyMap = std::unordered_map<Value, Type, KeyHash, SameKey>;

} // namespace orrery::formula
