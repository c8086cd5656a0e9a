// Computes the holidays of every file of a folder: microseconds for a year, of all kinds of days,
// in the country and in the region that takes longest.
//
// usage: holidays_bench FOLDER
#include "holidays/files/holiday_readers.h"
#include "holidays/language/evaluation.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using namespace orrery::holidays;
using Clock = std::chrono::steady_clock;

constexpr int kFirstYear = 2000;
constexpr int kLastYear = 2050;

/// The median and the longest time of the years.
struct Times {
    double median;
    double longest;
};

double MicrosecondsOf(const RuleSet& rules, int year, const HolidayChoice& choice)
{
    const auto start = Clock::now();
    const std::vector<Holiday> days = HolidaysOf(rules, year, choice);
    const std::chrono::duration<double, std::micro> time = Clock::now() - start;
    return days.empty() ? 0 : time.count();
}

Times Measure(const RuleSet& rules, const HolidayChoice& choice)
{
    std::vector<double> times;
    for (int year = kFirstYear; year <= kLastYear; ++year) {
        constexpr int tries = 3;
        double fastest = MicrosecondsOf(rules, year, choice);
        for (int i = 1; i < tries; ++i)
            fastest = std::min(fastest, MicrosecondsOf(rules, year, choice));
        times.push_back(fastest);
    }
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times.back()};
}

Times MeasureSlowestRegion(const RuleSet& rules)
{
    HolidayChoice choice;
    choice.categories = AllCategories();
    Times slowest = Measure(rules, choice);
    for (const Region& region : rules.regions) {
        choice.region = region.code;
        const Times times = Measure(rules, choice);
        if (times.longest > slowest.longest)
            slowest = times;
    }
    return slowest;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: holidays_bench FOLDER\n", stderr);
        return 2;
    }
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        const RuleSet rules = LoadHolidayFile(entry.path()).rules;
        const Times times = MeasureSlowestRegion(rules);
        std::printf("%s\t%zu\t%.1f\t%.1f\n", entry.path().stem().c_str(), rules.rules.size(),
                    times.median, times.longest);
    }
    return 0;
}
