#include "cli/dry_run.h"

#include "generate/calendar_sheets.h"
#include "generate/failure.h"
#include "util/error.h"
#include "util/text.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace orrery::cli {
namespace {

using generate::CalendarKind;
using generate::Worksheet;
using model::CellPosition;

/// The cells of one month that lie outside the sheet.
struct OutsideCells {
    int count = 0;
    CellPosition first;
};

class DryWorkbook;

/// A sheet that looks at each cell's place and writes nothing.
class DrySheet : public Worksheet {
public:
    DrySheet(DryWorkbook& workbook, std::string name) : workbook_(workbook), name_(std::move(name))
    {
    }
    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override { name_ = name; }
    void CopyAfter(Worksheet& after) override;
    Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                 generate::CellMember member) override;

private:
    DryWorkbook& workbook_;
    std::string name_;
};

/// Finds the sheets of a real workbook and stands in for them, so that a sheet that one calendar
/// renamed is gone for the other, as in a run.
class DryWorkbook : public generate::Workbook {
public:
    DryWorkbook(generate::Workbook& real, SheetLimits limits) : real_(real), limits_(limits) {}

    Worksheet* FindWorksheet(std::string_view name) override
    {
        for (const auto& sheet : sheets_) {
            if (util::EqualIgnoringCase(sheet->Name(), name))
                return sheet.get();
        }
        const Worksheet* const found = real_.FindWorksheet(name);
        if (found == nullptr || std::find(taken_.begin(), taken_.end(), found) != taken_.end())
            return nullptr;
        taken_.push_back(found);
        return &Insert(sheets_.end(), found->Name());
    }

    void SaveAs(const std::filesystem::path& /*target*/, generate::AccessMode /*mode*/) override {}

    void InsertAfter(const Worksheet& after) { Insert(Find(after) + 1, after.Name()); }

    Worksheet* After(const Worksheet& sheet)
    {
        const auto next = Find(sheet) + 1;
        return next == sheets_.end() ? nullptr : next->get();
    }

    void Look(CellPosition cell)
    {
        const bool inside = cell.row >= 1 && cell.row <= limits_.rows && cell.column >= 1 &&
                            cell.column <= limits_.columns;
        if (inside)
            return;
        if (outside_.count++ == 0)
            outside_.first = cell;
    }

    OutsideCells TakeOutsideCells() { return std::exchange(outside_, {}); }

private:
    using Sheets = std::vector<std::unique_ptr<DrySheet>>;

    Worksheet& Insert(Sheets::iterator place, std::string name)
    {
        return **sheets_.insert(place, std::make_unique<DrySheet>(*this, std::move(name)));
    }

    Sheets::iterator Find(const Worksheet& wanted)
    {
        return std::find_if(sheets_.begin(), sheets_.end(),
                            [&](const auto& sheet) { return sheet.get() == &wanted; });
    }

    generate::Workbook& real_;
    SheetLimits limits_;
    Sheets sheets_;
    std::vector<const Worksheet*> taken_;
    OutsideCells outside_;
};

void DrySheet::CopyAfter(Worksheet& after)
{
    workbook_.InsertAfter(after);
}

Worksheet* DrySheet::Next()
{
    return workbook_.After(*this);
}

void DrySheet::SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& /*value*/,
                       generate::CellMember /*member*/)
{
    workbook_.Look({row, column});
}

/// Collects what a run would report, each report on one line behind its calendar's name.
class FindingList : public util::ErrorReporter {
public:
    void Begin(std::string calendar) { calendar_ = std::move(calendar); }

    void Report(const std::string& text) override
    {
        std::string line;
        for (const std::string_view part : util::SplitLines(text))
            line += (line.empty() ? "" : " ") + std::string(part);
        lines_.push_back(calendar_ + ": " + line);
    }

    std::vector<std::string> Take() { return std::move(lines_); }

private:
    std::string calendar_;
    std::vector<std::string> lines_;
};

std::string OutsideText(const OutsideCells& cells, std::int16_t year, std::int16_t month,
                        SheetLimits limits)
{
    const std::string sheet = "outside the sheet, which has " + std::to_string(limits.rows) +
                              " rows and " + std::to_string(limits.columns) + " columns";
    return "in " + std::to_string(year) + '-' + std::to_string(month) + ", " +
           std::to_string(cells.count) + (cells.count == 1 ? " cell lies " : " cells lie ") +
           sheet + "; the first is row " + std::to_string(cells.first.row) + ", column " +
           std::to_string(cells.first.column) + '.';
}

} // namespace

SheetLimits LimitsOf(const std::string& fileName)
{
    constexpr SheetLimits classic{65536, 256};
    constexpr SheetLimits openXml{1048576, 16384};
    return util::ToUpperAscii(fileName).ends_with(".XLS") ? classic : openXml;
}

std::vector<std::string> DryRun(generate::Workbook& workbook, SheetLimits limits, std::int16_t year,
                                model::ParameterSets sets, const model::NameTables& names,
                                holidays::Date easter)
{
    DryWorkbook dry(workbook, limits);
    FindingList findings;
    generate::Context context{names, findings};
    context.easter = easter;
    context.progress = [&](CalendarKind /*kind*/, std::int16_t month) {
        const OutsideCells outside = dry.TakeOutsideCells();
        if (outside.count > 0)
            findings.Report(OutsideText(outside, year, month, limits));
    };
    try {
        findings.Begin("Monthly calendar");
        generate::MakeMonthlyCalendar(dry, year, sets.Monthly, context);
        findings.Begin("Yearly calendar");
        generate::MakeYearlyCalendar(dry, year, sets.Yearly, context);
    }
    catch (const generate::RunEnded&) {
        // The last finding says that the application is gone.
    }
    return findings.Take();
}

} // namespace orrery::cli
