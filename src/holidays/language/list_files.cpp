#include "holidays/language/list_files.h"

#include "holidays/language/rule_set.h"

#include <algorithm>
#include <utility>

namespace orrery::holidays {
namespace {

using Entries = std::vector<ListEntry>;

struct ListFile {
    std::string name; ///< empty for the first
    Entries entries;
};

const std::string* ExtraOf(const ListEntry& entry)
{
    return std::get_if<std::string>(&entry);
}

std::vector<ListFile> Split(const HolidayList& list)
{
    std::vector<ListFile> files(1);
    for (ListEntry& entry : EntriesOf(list)) {
        const std::string* const extra = ExtraOf(entry);
        if (auto name = extra == nullptr ? std::nullopt : FurtherFileOf(*extra))
            files.push_back({*std::move(name), {}});
        else
            files.back().entries.push_back(std::move(entry));
    }
    return files;
}

/// False, without a change of the list, if it has no room for them.
bool Join(const std::vector<ListFile>& files, HolidayList& list)
{
    Entries entries;
    for (const ListFile& file : files) {
        if (&file != &files.front())
            entries.emplace_back(FurtherFileLine(file.name));
        entries.insert(entries.end(), file.entries.begin(), file.entries.end());
    }
    HolidayList joined;
    AppendEntries(entries, joined);
    if (EntriesOf(joined).size() < entries.size())
        return false;
    list = std::move(joined);
    return true;
}

auto Find(std::vector<ListFile>& files, std::string_view name)
{
    return std::find_if(files.begin() + 1, files.end(),
                        [name](const ListFile& file) { return file.name == name; });
}

/// Whether an entry says more of the rule above it.
bool IsRefinement(const ListEntry& entry)
{
    const std::string* const extra = ExtraOf(entry);
    return extra != nullptr && extra->starts_with('>') && !extra->starts_with(">>");
}

bool IsRule(const ListEntry& entry)
{
    const std::string* const extra = ExtraOf(entry);
    return extra == nullptr || (!extra->starts_with('>') && !extra->starts_with('#'));
}

} // namespace

std::vector<std::string> FurtherFilesOf(const HolidayList& list)
{
    std::vector<std::string> names;
    for (ListFile& file : Split(list))
        names.push_back(std::move(file.name));
    names.erase(names.begin());
    return names;
}

HolidayList FurtherFile(const HolidayList& list, std::string_view name)
{
    auto files = Split(list);
    HolidayList found;
    if (const auto file = Find(files, name); file != files.end())
        AppendEntries(file->entries, found);
    return found;
}

bool PutFurtherFile(HolidayList& list, std::string_view name, const HolidayList& file)
{
    auto files = Split(list);
    Entries entries = EntriesOf(file);
    const auto old = Find(files, name);
    if (entries.empty() && old != files.end())
        files.erase(old);
    else if (old != files.end())
        old->entries = std::move(entries);
    else if (!entries.empty())
        files.push_back({std::string(name), std::move(entries)});
    return Join(files, list);
}

bool PutFirstFile(HolidayList& list, const HolidayList& file)
{
    auto files = Split(list);
    files.front().entries = EntriesOf(file);
    return Join(files, list);
}

bool ReplaceRule(HolidayList& list, std::size_t place, const std::vector<ListEntry>& entries)
{
    auto files = Split(list);
    auto file = files.begin();
    for (; place > file->entries.size(); ++file)
        place -= file->entries.size() + 1; // the line above the next file
    Entries& old = file->entries;
    const auto rule = old.begin() + static_cast<std::ptrdiff_t>(place) - 1;
    const auto end = std::find_if_not(rule + 1, old.end(), IsRefinement);
    old.insert(old.erase(rule, end), entries.begin(), entries.end());
    if (file != files.begin() && std::none_of(old.begin(), old.end(), IsRule))
        files.erase(file);
    return Join(files, list);
}

} // namespace orrery::holidays
