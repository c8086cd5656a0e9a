// Writes month blocks with the built-in engine: time for each written cell.
#include "engines/builtin/application.h"
#include "generate/month_block.h"
#include "generate/run_observer.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

using namespace orrery;

/// Ends the benchmark at the first failure.
class FailingObserver : public generate::RunObserver {
public:
    void Report(const std::string& text) override { throw std::runtime_error(text); }
};

model::CalendarParameters Everything()
{
    model::CalendarParameters set;
    set.RowIntervalOfDay = 4;
    set.FirstCellOfDay = {5, 2};
    set.OutWeekday = set.OutMonth = set.OutYear = set.OutHoliday = true;
    set.FirstCellOfWeekday = {4, 2};
    set.FirstCellOfMonth = {2, 2};
    set.FirstCellOfYear = {2, 8};
    set.FirstCellOfHoliday = {6, 2};
    return set;
}

model::NameTables Names()
{
    model::NameTables names;
    names.Months.Store(0, {"January", "February", "March", "April", "May", "June", "July", "August",
                           "September", "October", "November", "December"});
    names.Weekdays.Store(
        0, {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"});
    return names;
}

void FillMonth(benchmark::State& state, const char* templateName)
{
    const auto names = Names();
    FailingObserver observer;
    generate::Context context{names, observer};
    const auto parameters = Everything();
    const auto application = builtin::CreateApplication({});
    auto& workbook = application->OpenWorkbook(
        std::filesystem::path(ORRERY_SOURCE_DIR) / "data" / "template" / templateName, true);
    auto* sheet = workbook.FindWorksheet("Month");
    if (sheet == nullptr) {
        state.SkipWithError("the template has no sheet \"Month\"");
        return;
    }
    for (auto _ : state)
        generate::FillMonth(*sheet, 2027, 1, parameters, context);
    constexpr int kCells = 1 + 1 + 7 + 31;
    state.counters["per cell"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * kCells,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(FillMonth, xlsx, "Wall.xlsx");
BENCHMARK_CAPTURE(FillMonth, xls, "Wall.xls");

} // namespace

BENCHMARK_MAIN();
