#pragma once

#include "book/spreadsheet.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// The engine as the contract suite (book/spreadsheet_contract.h) sees it.
namespace orrery::contract {

using Value = std::variant<double, std::string>;

/// A sheet as read by a reader other than the engine: the cells with a value, by row and column
/// counted from 1. A cell with an empty text may be missing.
struct SavedSheet {
    std::string name;
    std::map<std::pair<std::int32_t, std::int32_t>, Value> cells;
};

/// An engine under test.
struct Engine {
    std::string name;      ///< letters and digits
    std::string extension; ///< of its workbooks, such as ".xlsx"
    std::int32_t rows = 0;
    std::int32_t columns = 0;
    std::function<std::unique_ptr<book::Application>()> start;
    /// Writes a workbook with three sheets: "Sheet1" with the text "first" in A1 and the number 42
    /// in B2, "Sheet2" with the text "second" in A1, "Third" with the text "third" in C3.
    std::function<void(const std::filesystem::path&)> makeTemplate;
    std::function<std::vector<SavedSheet>(const std::filesystem::path&)> read;
};

inline void PrintTo(const Engine& engine, std::ostream* out)
{
    *out << engine.name;
}

inline std::string NameOf(const testing::TestParamInfo<Engine>& info)
{
    return info.param.name;
}

} // namespace orrery::contract
