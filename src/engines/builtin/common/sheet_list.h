#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace orrery::builtin {

/// The sheets of an open workbook in their order. They stay where they are in memory.
template <class Sheet> using SheetList = std::vector<std::unique_ptr<Sheet>>;

template <class Sheet> std::size_t PositionOf(const SheetList<Sheet>& sheets, const Sheet& sheet)
{
    const auto found = std::find_if(sheets.begin(), sheets.end(),
                                    [&](const auto& each) { return each.get() == &sheet; });
    return static_cast<std::size_t>(found - sheets.begin());
}

/// The names of all sheets but one, which may be nullptr.
template <class Sheet>
std::vector<std::string> NamesBeside(const SheetList<Sheet>& sheets, const Sheet* sheet)
{
    std::vector<std::string> names;
    for (const auto& each : sheets) {
        if (each.get() != sheet)
            names.push_back(each->Name());
    }
    return names;
}

} // namespace orrery::builtin
