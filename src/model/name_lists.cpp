#include "model/name_lists.h"

#include "util/checked.h"
#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <utility>

namespace orrery::model {

namespace {

std::size_t CheckedIndex(std::int16_t index, std::size_t size)
{
    if (index < 0 || static_cast<std::size_t>(index) >= size)
        throw util::OutOfRangeError();
    return static_cast<std::size_t>(index);
}

} // namespace

template <std::size_t NamesPerList>
const typename NameLists<NamesPerList>::Names& NameLists<NamesPerList>::At(std::int16_t index) const
{
    static const Names none;
    const std::size_t slot = CheckedIndex(index, kCapacity);
    return slot < lists_.size() && lists_[slot] ? *lists_[slot] : none;
}

template <std::size_t NamesPerList>
const std::string& NameLists<NamesPerList>::Name(std::int16_t index, std::int16_t position) const
{
    return At(index)[CheckedIndex(position, NamesPerList)];
}

template <std::size_t NamesPerList>
void NameLists<NamesPerList>::Store(std::int16_t index, Names names)
{
    const std::size_t slot = CheckedIndex(index, kCapacity);
    if (slot >= lists_.size())
        lists_.resize(slot + 1);
    lists_[slot] = std::move(names);
    titles_.erase(index); // of a list that was there
    count_ = util::Add16(count_, 1);
}

template <std::size_t NamesPerList> std::int16_t NameLists<NamesPerList>::Add(Names names)
{
    const std::int16_t index = count_;
    Store(index, std::move(names));
    return index;
}

template <std::size_t NamesPerList> std::size_t NameLists<NamesPerList>::End() const
{
    return std::max(lists_.size(), static_cast<std::size_t>(count_));
}

template <std::size_t NamesPerList> bool NameLists<NamesPerList>::HasRoom() const
{
    return End() < kCapacity;
}

template <std::size_t NamesPerList>
std::int16_t NameLists<NamesPerList>::Append(Names names, std::string title)
{
    const auto index =
        static_cast<std::int16_t>(CheckedIndex(static_cast<std::int16_t>(End()), kCapacity));
    Store(index, std::move(names));
    SetTitle(index, std::move(title));
    count_ = util::Add16(index, 1);
    return index;
}

template <std::size_t NamesPerList>
const std::string& NameLists<NamesPerList>::Title(std::int16_t index) const
{
    static const std::string none;
    const auto title = titles_.find(index);
    return title == titles_.end() ? none : title->second;
}

template <std::size_t NamesPerList>
void NameLists<NamesPerList>::SetTitle(std::int16_t index, std::string title)
{
    CheckedIndex(index, kCapacity);
    titles_[index] = std::move(title);
}

template <std::size_t NamesPerList> void NameLists<NamesPerList>::Clear()
{
    lists_.clear();
    titles_.clear();
    count_ = 0;
}

template <std::size_t NamesPerList>
std::int16_t NameLists<NamesPerList>::Find(const Names& names) const
{
    for (std::size_t i = 0; i < lists_.size(); ++i) {
        if (lists_[i] == names)
            return static_cast<std::int16_t>(i);
    }
    return -1;
}

template <std::size_t NamesPerList>
std::optional<std::array<std::string, NamesPerList>> SplitNames(std::string_view text)
{
    std::array<std::string, NamesPerList> names;
    std::size_t pos = 0; // npos after the last piece; a text may have millions of pieces
    for (std::string& name : names) {
        if (pos == std::string_view::npos)
            return std::nullopt;
        const std::size_t comma = text.find(',', pos);
        name = util::Trim(text.substr(pos, comma - pos));
        pos = comma == std::string_view::npos ? comma : comma + 1;
    }
    return names;
}

template class NameLists<12>;
template class NameLists<7>;
template std::optional<MonthNameList::Names> SplitNames<12>(std::string_view text);
template std::optional<WeekdayNameList::Names> SplitNames<7>(std::string_view text);

} // namespace orrery::model
