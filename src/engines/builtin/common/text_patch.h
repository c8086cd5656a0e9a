#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::builtin {

/// Replacements in a text that otherwise stays as it is, byte for byte.
class TextPatch {
public:
    /// Replaces [begin:end) by `text`; begin == end inserts. Insertions at one offset keep their
    /// order and come before a replacement that begins there. Of two ranges of which one holds the
    /// other, the outer wins, of equal ranges the one added last; what is inserted inside a
    /// replaced range goes with it. Ranges that merely overlap are a broken promise (assert).
    void Replace(std::size_t begin, std::size_t end, std::string text);
    void Insert(std::size_t at, std::string text) { Replace(at, at, std::move(text)); }
    void Remove(std::size_t begin, std::size_t end) { Replace(begin, end, {}); }
    /// Takes over the replacements of another patch of the same text.
    void Add(TextPatch other);

    bool Empty() const { return replacements_.empty(); }
    std::string Apply(std::string_view text) const;
    /// Where an offset of the text lies in the result, behind what is inserted at it and before
    /// what is replaced from it on. It lies inside no replaced range.
    std::size_t PlaceOf(std::size_t offset) const;

private:
    struct Replacement {
        std::size_t begin;
        std::size_t end;
        std::string text;
    };
    /// By offset, the order in which they take effect.
    std::vector<const Replacement*> InOrder() const;

    std::vector<Replacement> replacements_;
};

} // namespace orrery::builtin
