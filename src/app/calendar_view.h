#pragma once

#include "book/engines.h"
#include "book/look/workbook_view.h"
#include "generate/trial_run.h"
#include "look/filled/filled_view.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::app {

/// What a calendar is made of.
struct CalendarRequest {
    std::filesystem::path templatePath;
    std::int16_t year = 0;
    model::ParameterSets sets;
    const model::NameTables& names;
};

/// The calendar of a year, as a run would make it, to be looked at. Nothing is saved.
class CalendarView {
public:
    /// The built-in application makes the calendar. Throws as `Engines::OpenView`, and
    /// OverflowError if the year's Easter Sunday cannot be computed.
    CalendarView(book::Engines& engines, const CalendarRequest& request);

    book::WorkbookView& Sheets() { return filled_; }
    /// What would go wrong.
    const std::vector<generate::Finding>& Findings() const { return trial_.findings; }
    /// What was written, in the order of filling.
    const std::vector<generate::TrialSheet>& Filled() const { return trial_.sheets; }
    /// The index of a month's [1:12] sheet, or with 0 of the year's; nothing if the run makes none.
    std::optional<std::size_t> SheetOf(std::int16_t month) const;

private:
    std::unique_ptr<book::WorkbookView> template_;
    generate::Trial trial_;
    look::FilledView filled_;
};

} // namespace orrery::app
