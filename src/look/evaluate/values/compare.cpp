#include "look/evaluate/values/compare.h"

#include "book/names.h"
#include "look/evaluate/values/decimals.h"
#include "util/unicode.h"

#include <functional>
#include <utility>

namespace orrery::formula {
namespace {

int KindRank(const Value& value)
{
    if (std::holds_alternative<double>(value))
        return 0;
    if (std::holds_alternative<std::string>(value))
        return 1;
    return std::holds_alternative<bool>(value) ? 2 : 3;
}

/// What nothing counts as beside another value.
Value BlankBeside(const Value& other)
{
    if (std::holds_alternative<std::string>(other))
        return std::string();
    if (std::holds_alternative<bool>(other))
        return false;
    return 0.0;
}

/// The place of a character in the order of texts.
std::pair<int, char32_t> Weight(char32_t character)
{
    if (character >= '0' && character <= '9')
        return {1, character};
    const bool isLetter = (character >= 'a' && character <= 'z') || character >= 0xC0;
    return {isLetter ? 2 : 0, character};
}

} // namespace

int CompareTexts(std::string_view left, std::string_view right)
{
    if (left == right)
        return 0;
    const std::string foldedLeft = book::FoldCase(left);
    const std::string foldedRight = book::FoldCase(right);
    std::size_t atLeft = 0;
    std::size_t atRight = 0;
    while (atLeft < foldedLeft.size() && atRight < foldedRight.size()) {
        const auto first = Weight(util::NextCharacter(foldedLeft, atLeft));
        const auto second = Weight(util::NextCharacter(foldedRight, atRight));
        if (first != second)
            return first < second ? -1 : 1;
    }
    if (atLeft == foldedLeft.size() && atRight == foldedRight.size())
        return 0;
    return atLeft == foldedLeft.size() ? -1 : 1;
}

int CompareValues(const Value& left, const Value& right)
{
    if (IsBlank(left) && IsBlank(right))
        return 0;
    if (IsBlank(left))
        return CompareValues(BlankBeside(right), right);
    if (IsBlank(right))
        return CompareValues(left, BlankBeside(left));
    if (KindRank(left) != KindRank(right))
        return KindRank(left) < KindRank(right) ? -1 : 1;
    if (const auto* number = std::get_if<double>(&left)) {
        const double other = std::get<double>(right);
        return IsNearly(*number, other) ? 0 : *number < other ? -1 : 1;
    }
    if (const auto* text = std::get_if<std::string>(&left))
        return CompareTexts(*text, std::get<std::string>(right));
    if (const auto* logical = std::get_if<bool>(&left))
        return static_cast<int>(*logical) - static_cast<int>(std::get<bool>(right));
    return 0;
}

std::u32string ToCharacters(std::string_view text)
{
    std::u32string characters;
    for (std::size_t at = 0; at < text.size();)
        characters += util::NextCharacter(text, at);
    return characters;
}

std::string FromCharacters(std::u32string_view characters)
{
    std::string text;
    for (const char32_t character : characters)
        util::AppendUtf8(text, character);
    return text;
}

TextPattern::TextPattern(std::string_view pattern) : isTooLong_(pattern.size() > 255)
{
    if (isTooLong_)
        return;
    const std::u32string characters = ToCharacters(book::FoldCase(pattern));
    for (std::size_t at = 0; at < characters.size(); ++at) {
        const char32_t character = characters[at];
        const char32_t next = at + 1 < characters.size() ? characters[at + 1] : 0;
        if (character == '~' && (next == '*' || next == '?' || next == '~'))
            items_.push_back({characters[++at], true});
        else if (character != '*' || items_.empty() || !IsStar(items_.size() - 1))
            items_.push_back({character, character != '*' && character != '?'});
    }
}

/// After a star that failed the text is tried one character later: no recursion. What fails behind
/// a star fails wherever the text begins: `isHopeless`.
bool TextPattern::MatchesFrom(std::u32string_view folded, bool isWhole, bool& isHopeless) const
{
    constexpr auto kNone = static_cast<std::size_t>(-1);
    std::size_t at = 0;
    std::size_t item = 0;
    std::size_t starItem = kNone;
    std::size_t starAt = 0;
    while (at < folded.size() && (isWhole || item < items_.size())) {
        if (IsStar(item)) {
            starItem = item++;
            starAt = at;
        }
        else if (item < items_.size() &&
                 (items_[item].character == folded[at] ||
                  (!items_[item].isPlain && items_[item].character == '?'))) {
            ++item;
            ++at;
        }
        else if (starItem != kNone) {
            item = starItem + 1;
            at = ++starAt;
        }
        else {
            return false;
        }
    }
    while (IsStar(item))
        ++item;
    isHopeless = starItem != kNone;
    return item == items_.size();
}

bool TextPattern::Matches(std::string_view text) const
{
    bool isHopeless = false;
    return !isTooLong_ && MatchesFrom(ToCharacters(book::FoldCase(text)), true, isHopeless);
}

std::size_t TextPattern::Find(std::u32string_view folded, std::size_t from) const
{
    bool isHopeless = isTooLong_;
    for (std::size_t at = from; at <= folded.size() && !isHopeless; ++at) {
        if (MatchesFrom(folded.substr(at), false, isHopeless))
            return at;
    }
    return std::u32string_view::npos;
}

bool HasWildcards(std::string_view pattern)
{
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        if (pattern[at] == '~')
            ++at;
        else if (pattern[at] == '*' || pattern[at] == '?')
            return true;
    }
    return false;
}

std::string WithoutTildes(std::string_view pattern)
{
    std::string plain;
    for (std::size_t at = 0; at < pattern.size(); ++at) {
        const char next = at + 1 < pattern.size() ? pattern[at + 1] : '\0';
        if (pattern[at] == '~' && (next == '*' || next == '?' || next == '~'))
            ++at;
        plain += pattern[at];
    }
    return plain;
}

bool SameKey::operator()(const Value& left, const Value& right) const
{
    if (left.index() != right.index())
        return false;
    if (const auto* text = std::get_if<std::string>(&left))
        return book::SameName(*text, std::get<std::string>(right));
    return left == right;
}

std::size_t KeyHash::operator()(const Value& value) const
{
    if (const auto* number = std::get_if<double>(&value))
        return std::hash<double>()(*number == 0 ? 0 : *number);
    if (const auto* text = std::get_if<std::string>(&value))
        return std::hash<std::string>()(book::FoldCase(*text));
    if (const auto* logical = std::get_if<bool>(&value))
        return *logical ? 1 : 2;
    return value.index();
}

} // namespace orrery::formula
