// Whole workbooks with the built-in engine: a shipped template in both formats is opened, its model
// sheet is copied eleven times and filled, and the workbook is saved.
#include "engines/builtin/application.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

namespace {

using namespace orrery;
namespace fs = std::filesystem;

fs::path Template(const char* name)
{
    return fs::path(ORRERY_SOURCE_DIR) / "data" / "template" / name;
}

void Open(benchmark::State& state, const char* name)
{
    for ([[maybe_unused]] auto _ : state)
        builtin::CreateApplication({})->OpenWorkbook(Template(name), true);
}
BENCHMARK_CAPTURE(Open, xlsx, "Desk.xlsx")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Open, xls, "Desk.xls")->Unit(benchmark::kMicrosecond);

void Fill(book::Worksheet& sheet)
{
    constexpr std::int32_t kWrittenRows = 20;
    constexpr std::int32_t kWrittenColumns = 20;
    for (std::int32_t row = 1; row <= kWrittenRows; ++row)
        for (std::int32_t column = 1; column <= kWrittenColumns; ++column)
            sheet.SetCell(row, column, static_cast<std::int16_t>(row), book::CellMember::Default);
}

void MakeYear(benchmark::State& state, const char* name)
{
    const fs::path target = fs::temp_directory_path() / (std::string("orrery-bench-") + name);
    for ([[maybe_unused]] auto _ : state) {
        const auto application = builtin::CreateApplication({});
        auto& workbook = application->OpenWorkbook(Template(name), true);
        auto* sheet = workbook.FindWorksheet("Month");
        Fill(*sheet);
        for (int month = 2; month <= 12; ++month) {
            sheet->CopyAfter(*sheet);
            sheet = sheet->Next();
            sheet->SetName("Month " + std::to_string(month));
            Fill(*sheet);
        }
        workbook.SaveAs(target, book::AccessMode::NoChange);
    }
    fs::remove(target);
}
BENCHMARK_CAPTURE(MakeYear, xlsx, "Desk.xlsx")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(MakeYear, xls, "Desk.xls")->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
