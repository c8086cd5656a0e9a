#pragma once

#include "book/contract_engine.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace orrery::excel_test {

/// Where a calendar's items go in this test; rows and columns from 1.
struct Layout {
    std::pair<int, int> year;
    std::pair<int, int> month;
    std::pair<int, int> weekdays;
    std::pair<int, int> days;
    std::pair<int, int> holidays;
    int columnStep = 1;
    int rowStep = 1;
    bool mondayFirst = false;
    bool holidaysBelow = false; ///< several on one day below each other, else the last
};

/// Holidays by month and day, those of one day in order.
using Holidays = std::map<std::pair<int, int>, std::vector<std::string>>;

/// The calls that an application must receive, and the cells that they write. Objects are numbered
/// in the order in which the application creates them.
class ExpectedRun {
public:
    void Call(const std::string& call) { calls_.push_back(call); }
    /// A month of 2024 with its items moved down and across.
    void Month(int sheet, int month, const Layout& layout, const Holidays& holidays, int down = 0,
               int across = 0);

    const std::vector<std::string>& Calls() const { return calls_; }
    int CellCount() const { return ranges_; }
    /// By the number of the sheet.
    const std::map<int, std::map<std::pair<std::int32_t, std::int32_t>, contract::Value>>&
    Cells() const
    {
        return cells_;
    }

private:
    enum class Member { Default, Value };
    void Number(int sheet, int row, int column, int number, Member member);
    void Text(int sheet, int row, int column, const std::string& text, Member member);
    void Cell(int sheet, int row, int column, const std::string& value, Member member);

    std::vector<std::string> calls_;
    std::map<int, std::map<std::pair<std::int32_t, std::int32_t>, contract::Value>> cells_;
    int ranges_ = 0;
};

/// A text as it appears in the log.
std::string LoggedText(const std::string& text);

} // namespace orrery::excel_test
