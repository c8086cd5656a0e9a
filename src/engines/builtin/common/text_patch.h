#pragma once

#include <cassert>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::builtin {

/// Replacements in a text that otherwise stays as it is, byte for byte.
class TextPatch {
public:
    /// Replaces [begin:end) with `text`; begin == end inserts. Insertions at one offset keep their
    /// order and come before a replacement that begins there. If a range contains another, the
    /// outer one wins; of equal ranges, the last one added. Insertions inside a replaced range are
    /// dropped. Ranges must not overlap otherwise (assert).
    void Replace(std::size_t begin, std::size_t end, std::string text);
    void Insert(std::size_t at, std::string text) { Replace(at, at, std::move(text)); }
    void Remove(std::size_t begin, std::size_t end) { Replace(begin, end, {}); }
    /// Adds the replacements of another patch of the same text.
    void Add(TextPatch other);

    bool Empty() const { return replacements_.empty(); }
    std::string Apply(std::string_view text) const;
    /// Gives the result for a text of `size` bytes piece by piece: `keep(begin, end)` for a range
    /// of it that stays, `put(text)` for what replaces one. Pieces are not empty.
    template <typename Keep, typename Put>
    void ForEachPiece(std::size_t size, Keep keep, Put put) const;
    /// The offset in the result of `offset` in the text: after what is inserted there, before what
    /// is replaced from there on. It must not be inside a replaced range.
    std::size_t PlaceOf(std::size_t offset) const;

private:
    struct Replacement {
        std::size_t begin;
        std::size_t end;
        std::string text;
    };
    /// By offset, in the order in which they take effect.
    std::vector<const Replacement*> InOrder() const;

    std::vector<Replacement> replacements_;
};

template <typename Keep, typename Put>
void TextPatch::ForEachPiece(std::size_t size, Keep keep, Put put) const
{
    std::size_t done = 0; // everything before it is given or replaced
    for (const Replacement* replacement : InOrder()) {
        assert(replacement->end <= size);
        if (replacement->begin < done) { // inside a wider range
            assert(replacement->end <= done);
            continue;
        }
        if (done < replacement->begin)
            keep(done, replacement->begin);
        if (!replacement->text.empty())
            put(std::string_view(replacement->text));
        done = replacement->end;
    }
    if (done < size)
        keep(done, size);
}

} // namespace orrery::builtin
