#include "holidays/calendars/moon.h"

#include "holidays/calendars/angle.h"
#include "holidays/calendars/delta_t.h"

#include <array>
#include <cmath>

namespace orrery::holidays::calendars {
namespace {

// All series: J. Meeus, Astronomical Algorithms, 2nd edition, chapter 49.
constexpr JulianDay kFirstNewMoon = 2451550.09766;
constexpr double kMeanMonth = 29.530588861;

/// A periodic term in days: the sine of so many times the sun's and the moon's anomaly and the
/// moon's argument of latitude, times that power of the eccentricity of the Earth's orbit.
struct NewAndFullTerm {
    double newMoon, fullMoon;
    int sun, moon, latitude;
    int eccentricity;
};

constexpr std::array<NewAndFullTerm, 24> kNewAndFull = {{
    {-0.40720, -0.40614, 0, 1, 0, 0}, {0.17241, 0.17302, 1, 0, 0, 1},
    {0.01608, 0.01614, 0, 2, 0, 0},   {0.01039, 0.01043, 0, 0, 2, 0},
    {0.00739, 0.00734, -1, 1, 0, 1},  {-0.00514, -0.00515, 1, 1, 0, 1},
    {0.00208, 0.00209, 2, 0, 0, 2},   {-0.00111, -0.00111, 0, 1, -2, 0},
    {-0.00057, -0.00057, 0, 1, 2, 0}, {0.00056, 0.00056, 1, 2, 0, 1},
    {-0.00042, -0.00042, 0, 3, 0, 0}, {0.00042, 0.00042, 1, 0, 2, 1},
    {0.00038, 0.00038, 1, 0, -2, 1},  {-0.00024, -0.00024, -1, 2, 0, 1},
    {-0.00007, -0.00007, 2, 1, 0, 0}, {0.00004, 0.00004, 0, 2, -2, 0},
    {0.00004, 0.00004, 3, 0, 0, 0},   {0.00003, 0.00003, 1, 1, -2, 0},
    {0.00003, 0.00003, 0, 2, 2, 0},   {-0.00003, -0.00003, 1, 1, 2, 0},
    {0.00003, 0.00003, -1, 1, 2, 0},  {-0.00002, -0.00002, -1, 1, -2, 0},
    {-0.00002, -0.00002, 1, 3, 0, 0}, {0.00002, 0.00002, 0, 4, 0, 0},
}};

struct QuarterTerm {
    double days;
    int sun, moon, latitude;
    int eccentricity;
};

constexpr std::array<QuarterTerm, 24> kQuarters = {{
    {-0.62801, 0, 1, 0, 0},   {0.17172, 1, 0, 0, 1},   {-0.01183, 1, 1, 0, 1},
    {0.00862, 0, 2, 0, 0},    {0.00804, 0, 0, 2, 0},   {0.00454, -1, 1, 0, 1},
    {0.00204, 2, 0, 0, 2},    {-0.00180, 0, 1, -2, 0}, {-0.00070, 0, 1, 2, 0},
    {-0.00040, 0, 3, 0, 0},   {-0.00034, -1, 2, 0, 1}, {0.00032, 1, 0, 2, 1},
    {0.00032, 1, 0, -2, 1},   {-0.00028, 2, 1, 0, 2},  {0.00027, 1, 2, 0, 1},
    {-0.00005, -1, 1, -2, 0}, {0.00004, 0, 2, 2, 0},   {-0.00004, 1, 1, 2, 0},
    {0.00004, -2, 1, 0, 0},   {0.00003, 1, 1, -2, 0},  {0.00003, 3, 0, 0, 0},
    {0.00002, 0, 2, -2, 0},   {0.00002, -1, 1, 2, 0},  {-0.00002, 1, 3, 0, 0},
}};

constexpr std::size_t kLargeTerms = 7; // of the new moon, all above 0.002 days

constexpr double kNodeTerm = -0.00017; // of all phases

/// A term of the planets: an angle that grows evenly with the months.
struct PlanetTerm {
    double days, start, change;
};

constexpr std::array<PlanetTerm, 14> kPlanets = {{
    {0.000325, 299.77, 0.107408},
    {0.000165, 251.88, 0.016321},
    {0.000164, 251.83, 26.651886},
    {0.000126, 349.42, 36.412478},
    {0.000110, 84.66, 18.206239},
    {0.000062, 141.74, 53.303771},
    {0.000060, 207.14, 2.453732},
    {0.000056, 154.84, 7.306860},
    {0.000047, 34.52, 27.261239},
    {0.000042, 207.19, 0.121824},
    {0.000040, 291.34, 1.844379},
    {0.000037, 161.72, 24.198154},
    {0.000035, 239.56, 25.513099},
    {0.000023, 331.55, 3.592518},
}};

/// The angles that the terms use, in radians, at a number of months from the first new moon.
struct Angles {
    double sun, moon, latitude, node;
    std::array<double, 3> eccentricity; ///< its powers
};

Angles AnglesAt(double months, double t)
{
    const double e = 1 - (0.002516 + 0.0000074 * t) * t;
    const double sun = 2.5534 + 29.10535670 * months - 0.0000014 * t * t;
    const double moon = 201.5643 + 385.81693528 * months + (0.0107582 + 0.00001238 * t) * t * t;
    const double latitude = 160.7108 + 390.67050284 * months - (0.0016118 + 0.00000227 * t) * t * t;
    const double node = 124.7746 - 1.56375588 * months + (0.0020672 + 0.00000215 * t) * t * t;
    return {Radians(sun), Radians(moon), Radians(latitude), Radians(node), {1, e, e * e}};
}

template <class Term> double Periodic(const Term& term, const Angles& at)
{
    return at.eccentricity[static_cast<std::size_t>(term.eccentricity)] *
           std::sin(term.sun * at.sun + term.moon * at.moon + term.latitude * at.latitude);
}

double NewOrFullTerms(const Angles& at, bool full, std::size_t count = kNewAndFull.size())
{
    double sum = 0;
    for (std::size_t index = 0; index < count; ++index) {
        const NewAndFullTerm& term = kNewAndFull[index];
        sum += (full ? term.fullMoon : term.newMoon) * Periodic(term, at);
    }
    return sum;
}

double QuarterTerms(const Angles& at, bool last)
{
    double sum = 0;
    for (const QuarterTerm& term : kQuarters)
        sum += term.days * Periodic(term, at);
    const double between = 0.00306 - 0.00038 * at.eccentricity[1] * std::cos(at.sun) +
                           0.00026 * std::cos(at.moon) - 0.00002 * std::cos(at.moon - at.sun) +
                           0.00002 * std::cos(at.moon + at.sun) +
                           0.00002 * std::cos(2 * at.latitude);
    return sum + (last ? -between : between);
}

/// The mean moment of a phase, in dynamical time.
JulianDay MeanPhase(double months, double t)
{
    return kFirstNewMoon + kMeanMonth * months + 0.00015437 * t * t - 0.00000015 * t * t * t;
}

constexpr double kMonthsOfCentury = 1236.85;

} // namespace

JulianDay MoonPhase(int quarters)
{
    const double months = quarters / 4.0;
    const double t = months / kMonthsOfCentury;
    const Angles at = AnglesAt(months, t);
    const int phase = FloorRemainder(quarters, 4);
    double time = MeanPhase(months, t);
    time += phase % 2 == 0 ? NewOrFullTerms(at, phase == 2) : QuarterTerms(at, phase == 3);
    time += kNodeTerm * std::sin(at.node);
    for (const PlanetTerm& term : kPlanets)
        time += term.days * std::sin(Radians(term.start + term.change * months));
    return time - DeltaT(time);
}

JulianDay RoughNewMoon(int quarters)
{
    const double months = quarters / 4.0;
    const double t = months / kMonthsOfCentury;
    const double time =
        MeanPhase(months, t) + NewOrFullTerms(AnglesAt(months, t), false, kLargeTerms);
    return time - DeltaT(time);
}

int NewMoonBefore(JulianDay moment)
{
    return 4 * static_cast<int>(std::floor((moment - kFirstNewMoon) / kMeanMonth));
}

} // namespace orrery::holidays::calendars
