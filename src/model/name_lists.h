#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::model {

/// A table of up to 257 lists of names; a parameter set selects one by its index [0:256]. The count
/// is kept separately: skipped lists stay empty and are not counted, so the counted lists are not
/// always the first ones.
template <std::size_t NamesPerList> class NameLists {
public:
    static constexpr std::size_t kCapacity = 257;
    using Names = std::array<std::string, NamesPerList>;

    std::int16_t Count() const { return count_; }
    /// Throws OutOfRangeError outside the table. A list that is not stored has empty names.
    const Names& At(std::int16_t index) const;
    /// One name; throws OutOfRangeError outside the table or the list.
    const std::string& Name(std::int16_t index, std::int16_t position) const;
    /// Stores list `index` [0:256] and counts it. Throws OutOfRangeError outside the table.
    void Store(std::int16_t index, Names names);
    /// Stores a list at the index equal to the count, which after a gap may overwrite another list.
    /// Throws OutOfRangeError if the table is full.
    std::int16_t Add(Names names);
    /// Stores a named list behind all others, so that all are counted. Throws OutOfRangeError if
    /// the table is full.
    std::int16_t Append(Names names, std::string title);
    /// Whether `Append` has a place.
    bool HasRoom() const;
    /// What users call a list: its language, for example. Empty if it has no name of its own.
    const std::string& Title(std::int16_t index) const;
    /// Names a stored list, until another takes its place. Throws OutOfRangeError outside the
    /// table.
    void SetTitle(std::int16_t index, std::string title);
    /// Removes all lists.
    void Clear();
    /// Index of the first stored list with these names, or -1.
    std::int16_t Find(const Names& names) const;

private:
    std::size_t End() const; ///< the first index behind all lists

    std::vector<std::optional<Names>> lists_;    ///< up to the last stored list
    std::map<std::int16_t, std::string> titles_; ///< by index
    std::int16_t count_ = 0;
};

using MonthNameList = NameLists<12>;  ///< January first
using WeekdayNameList = NameLists<7>; ///< Sunday first

/// The program's two tables of names.
struct NameTables {
    MonthNameList Months;
    WeekdayNameList Weekdays;
};

/// The first names of a comma-separated text, each trimmed; nothing if there are too few.
template <std::size_t NamesPerList>
std::optional<std::array<std::string, NamesPerList>> SplitNames(std::string_view text);

extern template class NameLists<12>;
extern template class NameLists<7>;

} // namespace orrery::model
