#include "holidays/calendars/delta_t.h"

#include <array>
#include <cmath>

namespace orrery::holidays::calendars {
namespace {

constexpr JulianDay kStartOf2000 = 2451544.5;
constexpr double kFirstYear = 1900;
constexpr double kStep = 5; // years between two values
/// Seconds in 1900, 1905 ... 2100: measured to 2025 (Astronomical Almanac, IERS), after that the
/// forecast of the libastro library. The published tables of the Chinese calendar go with that
/// forecast; the Earth has turned faster since, so that new moons less than a minute from midnight
/// may be moved by later almanacs.
constexpr std::array<double, 41> kSeconds = {
    -2.72,  3.86,   10.46,  17.20,  21.16,  23.62,  24.02,  23.93, 24.33,  26.77,  29.15,
    31.07,  33.15,  35.73,  40.18,  45.48,  50.54,  54.34,  56.86, 60.78,  63.83,  64.69,
    66.07,  67.64,  69.36,  69.14,  77.57,  83.51,  90.65,  98.88, 108.06, 118.07, 128.79,
    140.10, 151.88, 163.99, 176.32, 188.74, 201.13, 213.37, 225.33};

double Seconds(double year)
{
    const double place = (year - kFirstYear) / kStep;
    if (place < 0 || place >= kSeconds.size() - 1) {
        // L. V. Morrison and F. R. Stephenson, Journal for the History of Astronomy 35, 2004.
        const double centuries = (year - 1820) / 100;
        return -20 + 32 * centuries * centuries;
    }
    const auto index = static_cast<std::size_t>(place);
    const double part = place - static_cast<double>(index);
    return kSeconds[index] + part * (kSeconds[index + 1] - kSeconds[index]);
}

} // namespace

double DeltaT(JulianDay moment)
{
    return Seconds(2000 + (moment - kStartOf2000) / 365.25) / 86400;
}

} // namespace orrery::holidays::calendars
