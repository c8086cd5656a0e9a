// The pages of the shipped templates inside a running process, as the window shows them: from the
// file to its drawing, every time from the beginning.
#include "app/calendar_view.h"
#include "engines/engine_choice.h"
#include "look/canvas/svg_canvas.h"
#include "look/display/sheet_picture.h"
#include "look/text/font_tables.h"
#include "model/parameter_file.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace orrery;

constexpr std::int16_t kYear = 2027;
constexpr double kNow = 46'388; // the first of January 2027

std::string DrawPage(const std::filesystem::path& path, std::int16_t month)
{
    model::NameTables names;
    model::ParameterSets sets;
    auto parameters = path;
    model::ReadParameterFile(parameters.replace_extension(".ini"), names, sets);
    engines::InstalledEngines installed;
    app::CalendarView calendar(installed, {path, kYear, sets, names});
    const auto sheet = calendar.SheetOf(month);
    if (!sheet)
        return "";
    const look::FontTables fonts;
    look::SheetPicture picture(calendar.Sheets(), *sheet, fonts,
                               {kNow, path.filename().string(), path.parent_path().string()});
    look::SvgCanvas canvas(picture.Layout().width, picture.Layout().height, picture.Name());
    picture.Paint(canvas);
    return canvas.Finish();
}

void TimePage(benchmark::State& state, const std::filesystem::path& path, std::int16_t month)
{
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto _ : state) {
        const std::string page = DrawPage(path, month);
        bytes = page.size();
        benchmark::DoNotOptimize(page);
    }
    state.counters["bytes"] = static_cast<double>(bytes);
}

/// The pages that a template has: that of May, that of the year, or both.
void RegisterPages(const std::filesystem::path& path)
{
    for (const std::int16_t month : {std::int16_t{0}, std::int16_t{5}}) {
        if (DrawPage(path, month).empty())
            continue;
        const std::string name = path.filename().string() + (month == 0 ? " year" : " May");
        benchmark::RegisterBenchmark(name.c_str(), TimePage, path, month)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    std::vector<std::filesystem::path> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(ORRERY_SOURCE_DIR "/data/template")) {
        if (entry.path().extension() != ".ini")
            paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    for (const auto& path : paths)
        RegisterPages(path);
    benchmark::RunSpecifiedBenchmarks();
}
