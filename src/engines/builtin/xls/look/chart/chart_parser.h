#pragma once

#include "engines/builtin/xls/look/chart/chart_axes.h"
#include "engines/builtin/xls/look/chart/chart_parts.h"
#include "engines/builtin/xls/look/chart/drawing_source.h"
#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Reads the records of a chart. A record's parts stand between the records Begin and End that
/// follow it. [MS-XLS] 2.1.7.20.1
class ChartParser {
public:
    ChartParser(const DrawingSource& source, ChartBudget& budget) : source_(source), budget_(budget)
    {
    }
    /// Takes the next record. Throws Error(DamagedWorkbook) if it is too short; the next ones may
    /// be read nevertheless.
    void Add(const Record& record);
    const ChartParts& Parts() const { return parts_; }
    ChartParts Take() { return std::move(parts_); }

private:
    void Read(ChartRecord type, std::string_view data);
    void ReadOfSeries(ChartRecord type, std::string_view data);
    void ReadOfGroup(ChartRecord type, std::string_view data);
    void ReadOfText(ChartRecord type, std::string_view data);
    void ReadFormat(ChartRecord type, std::string_view data, DataLook& look);
    void BeginPart(ChartRecord type, std::string_view data);
    void BeginDataFormat(std::string_view data);
    void BeginAxis(std::string_view data);
    void BeginText(std::string_view data);
    void ReadLegend(std::string_view data);
    void EndText();
    void AddValue(const Record& record);
    ChartRecord Parent() const { return open_.empty() ? ChartRecord::End : open_.back(); }

    const DrawingSource& source_;
    ChartBudget& budget_;
    ChartParts parts_;
    std::vector<ChartRecord> open_; // the enclosing records
    ChartRecord last_ = ChartRecord::End;

    DataLook scratch_;           // of what does not matter
    DataLook* look_ = &scratch_; // of the current DataFormat
    DataLook* frame_ = &scratch_;
    std::size_t axes_ = 0; // 0 primary, 1 secondary
    book::ChartAxis unusedAxis_;
    std::optional<AxisReader> axis_;
    TextPart text_;
    std::optional<std::uint16_t> defaultText_;
    std::uint16_t dataIndex_ = 0; // which data the values that follow belong to
};

} // namespace orrery::xls
