#include "engines/builtin/xlsx/sheet/sheet_cells.h"

#include <benchmark/benchmark.h>
#include <memory>
#include <string>

namespace orrery::xlsx {
namespace {

/// A sheet like those of templates: every cell is formatted, one in five is a formula.
std::string MakeSheet(std::int32_t rows, std::int32_t columns)
{
    std::string xml = "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/"
                      "main\"><dimension ref=\"A1:A1\"/><sheetData>";
    for (std::int32_t row = 1; row <= rows; ++row) {
        xml += "<row r=\"" + std::to_string(row) + "\" spans=\"1:" + std::to_string(columns) +
               "\" ht=\"15\" customHeight=\"1\">";
        for (std::int32_t column = 1; column <= columns; ++column) {
            const std::string place = FormatCellAddress({row, column});
            xml += "<c r=\"" + place + "\" s=\"" + std::to_string(column % 7) + '"';
            xml += column % 5 == 0 ? "><f>SUM(A1:B2)</f><v>12</v></c>"
                                   : " t=\"s\"><v>" + std::to_string(row) + "</v></c>";
        }
        xml += "</row>";
    }
    return xml + "</sheetData></worksheet>";
}

std::shared_ptr<const SheetText> Index(std::string xml)
{
    return std::make_shared<SheetText>(std::make_shared<const std::string>(std::move(xml)),
                                       "/xl/worksheets/sheet1.xml");
}

constexpr std::int32_t kWrittenRows = 20;
constexpr std::int32_t kWrittenColumns = 20;

void Write(SheetCells& cells)
{
    for (std::int32_t row = 1; row <= kWrittenRows; ++row)
        for (std::int32_t column = 1; column <= kWrittenColumns; ++column)
            cells.Set(row * 2, column * 2, static_cast<std::int16_t>(row));
}

void IndexSheet(benchmark::State& state)
{
    const auto xml = std::make_shared<const std::string>(
        MakeSheet(static_cast<std::int32_t>(state.range(0)), 40));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(SheetText(xml, "/xl/worksheets/sheet1.xml"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(xml->size()));
}
BENCHMARK(IndexSheet)->Arg(50)->Arg(1000)->Arg(25000)->Unit(benchmark::kMillisecond);

void SetCell(benchmark::State& state)
{
    const auto sheet = Index(MakeSheet(50, 40));
    for ([[maybe_unused]] auto _ : state) {
        SheetCells cells(sheet);
        Write(cells);
        benchmark::DoNotOptimize(cells);
    }
    state.SetItemsProcessed(state.iterations() * kWrittenRows * kWrittenColumns);
}
BENCHMARK(SetCell);

void CheckCell(benchmark::State& state)
{
    const SheetCells cells(Index(MakeSheet(50, 40)));
    const Styles styles("", "");
    for ([[maybe_unused]] auto _ : state)
        cells.CheckWritable(25, 20, styles);
}
BENCHMARK(CheckCell);

/// Writes 400 cells into a template's sheet and makes its new text.
void PatchSheet(benchmark::State& state)
{
    const auto sheet = Index(MakeSheet(static_cast<std::int32_t>(state.range(0)), 40));
    SheetCells cells(sheet);
    Write(cells);
    const bool recalculate = state.range(1) != 0;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(cells.Patch(recalculate).Apply(sheet->Xml()));
    state.SetItemsProcessed(state.iterations() * kWrittenRows * kWrittenColumns);
}
BENCHMARK(PatchSheet)
    ->ArgNames({"rows", "recalculate"})
    ->Args({50, 0})
    ->Args({50, 1})
    ->Args({25000, 0})
    ->Args({25000, 1})
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace orrery::xlsx

BENCHMARK_MAIN();
