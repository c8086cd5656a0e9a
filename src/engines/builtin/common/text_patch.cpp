#include "engines/builtin/common/text_patch.h"

#include <algorithm>
#include <cassert>
#include <iterator>
#include <utility>

namespace orrery::builtin {

void TextPatch::Replace(std::size_t begin, std::size_t end, std::string text)
{
    assert(begin <= end);
    replacements_.push_back({begin, end, std::move(text)});
}

void TextPatch::Add(TextPatch other)
{
    if (replacements_.empty()) {
        replacements_ = std::move(other.replacements_);
        return;
    }
    replacements_.insert(replacements_.end(), std::make_move_iterator(other.replacements_.begin()),
                         std::make_move_iterator(other.replacements_.end()));
}

std::vector<const TextPatch::Replacement*> TextPatch::InOrder() const
{
    std::vector<const Replacement*> order;
    order.reserve(replacements_.size());
    for (const Replacement& replacement : replacements_)
        order.push_back(&replacement);
    // At one offset: insertions, then the widest range; of equal ranges the last one added.
    const auto before = [](const Replacement* left, const Replacement* right) {
        if (left->begin != right->begin)
            return left->begin < right->begin;
        const bool leftInserts = left->begin == left->end;
        const bool rightInserts = right->begin == right->end;
        if (leftInserts || rightInserts)
            return leftInserts && (!rightInserts || left < right);
        if (left->end != right->end)
            return left->end > right->end;
        return left > right;
    };
    if (!std::is_sorted(order.begin(), order.end(), before))
        std::sort(order.begin(), order.end(), before);
    return order;
}

std::string TextPatch::Apply(std::string_view text) const
{
    std::size_t size = text.size();
    for (const Replacement& replacement : replacements_)
        size += replacement.text.size();
    std::string result;
    result.reserve(size);
    ForEachPiece(
        text.size(),
        [&](std::size_t begin, std::size_t end) { result.append(text, begin, end - begin); },
        [&](std::string_view piece) { result.append(piece); });
    return result;
}

std::size_t TextPatch::PlaceOf(std::size_t offset) const
{
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t done = 0;
    for (const Replacement* replacement : InOrder()) {
        if (replacement->begin > offset ||
            (replacement->begin == offset && replacement->end > offset))
            break;
        if (replacement->begin < done) // inside a wider range
            continue;
        assert(replacement->end <= offset);
        added += replacement->text.size();
        removed += replacement->end - replacement->begin;
        done = replacement->end;
    }
    return offset + added - removed;
}

} // namespace orrery::builtin
