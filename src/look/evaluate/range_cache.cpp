#include "look/evaluate/range_cache.h"

#include <utility>

namespace orrery::formula {
namespace {

constexpr std::size_t kMostValues = 4'000'000;
constexpr std::size_t kMostSummaries = 200'000;

/// How many plain values take as much memory.
std::size_t SizeOf(const Array& array)
{
    std::size_t bytes = 0;
    for (const Value& value : array.values) {
        const auto* const text = std::get_if<std::string>(&value);
        bytes += sizeof(Value) + (text != nullptr ? text->size() : 0);
    }
    return bytes / sizeof(Value);
}

} // namespace

void RangeCache::MakeRoom(std::size_t values)
{
    if (kept_ + values > kMostValues)
        Clear();
    kept_ += values;
}

void RangeCache::Clear()
{
    values_.clear();
    summaries_.clear();
    counts_.clear();
    lines_.clear();
    kept_ = 0;
}

ArrayPointer RangeCache::FindValues(const Area& area) const
{
    const auto found = values_.find(KeyOf(area));
    return found == values_.end() ? nullptr : found->second;
}

void RangeCache::KeepValues(const Area& area, const ArrayPointer& values)
{
    MakeRoom(SizeOf(*values));
    values_[KeyOf(area)] = values;
}

const AreaSummary* RangeCache::FindSummary(const Area& area) const
{
    const auto found = summaries_.find(KeyOf(area));
    return found == summaries_.end() ? nullptr : &found->second;
}

const AreaSummary& RangeCache::KeepSummary(const Area& area, const AreaSummary& summary)
{
    if (summaries_.size() >= kMostSummaries)
        summaries_.clear();
    return summaries_[KeyOf(area)] = summary;
}

const KeyMap<std::size_t>* RangeCache::FindCounts(const Area& area) const
{
    const auto found = counts_.find(KeyOf(area));
    return found == counts_.end() ? nullptr : &found->second;
}

const KeyMap<std::size_t>& RangeCache::KeepCounts(const Area& area, KeyMap<std::size_t> counts)
{
    MakeRoom(counts.size());
    return counts_[KeyOf(area)] = std::move(counts);
}

const KeyMap<std::int32_t>& RangeCache::Places(const ArrayPointer& array, bool isColumn,
                                               std::int32_t at)
{
    const LineKey key{array.get(), isColumn, at};
    if (const auto found = lines_.find(key); found != lines_.end())
        return found->second.places;
    const std::int32_t size = isColumn ? array->rows : array->columns;
    MakeRoom(static_cast<std::size_t>(size));
    Line& line = lines_[key];
    line.array = array;
    for (std::int32_t index = 0; index < size; ++index)
        line.places.try_emplace(isColumn ? array->At(index, at) : array->At(at, index), index);
    return line.places;
}

} // namespace orrery::formula
