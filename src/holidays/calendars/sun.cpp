#include "holidays/calendars/sun.h"

#include "holidays/calendars/angle.h"
#include "holidays/calendars/delta_t.h"
#include "holidays/calendars/earth_terms.h"

#include <cmath>
#include <numbers>
#include <span>

namespace orrery::holidays::calendars {
namespace {

constexpr JulianDay kNoonOf2000 = 2451545.0; // J2000.0
constexpr double kDaysOfCentury = 36525.0;
constexpr double kArcSecond = 1.0 / 3600;
constexpr double kDaysOfDegree = 365.2422 / 360;

double Sum(std::span<const EarthTerm> terms, double time)
{
    double sum = 0;
    for (const EarthTerm& term : terms)
        sum += term.amplitude * std::cos(term.phase + term.frequency * time);
    return sum;
}

/// A term of the nutation: multiples of the moon's elongation, the sun's and the moon's anomaly,
/// the moon's argument of latitude and its node; the amplitude in 0.0001".
struct NutationTerm {
    int elongation, sun, moon, latitude, node;
    double amplitude, change;
};

// IAU 1980, the terms above 0.01": J. Meeus, Astronomical Algorithms, 2nd edition, table 22.A.
constexpr std::array<NutationTerm, 13> kNutation = {{
    {0, 0, 0, 0, 1, -171996, -174.2},
    {-2, 0, 0, 2, 2, -13187, -1.6},
    {0, 0, 0, 2, 2, -2274, -0.2},
    {0, 0, 0, 0, 2, 2062, 0.2},
    {0, 1, 0, 0, 0, 1426, -3.4},
    {0, 0, 1, 0, 0, 712, 0.1},
    {-2, 1, 0, 2, 2, -517, 1.2},
    {0, 0, 0, 2, 1, -386, -0.4},
    {0, 0, 1, 2, 2, -301, 0},
    {-2, -1, 0, 2, 2, 217, -0.5},
    {-2, 0, 1, 0, 0, -158, 0},
    {-2, 0, 0, 2, 1, 129, 0.1},
    {0, 0, -1, 2, 2, 123, 0},
}};

/// The nutation in longitude, in degrees; the time is in centuries from 2000.
double Nutation(double t)
{
    const double elongation = 297.85036 + 445267.111480 * t;
    const double sun = 357.52772 + 35999.050340 * t;
    const double moon = 134.96298 + 477198.867398 * t;
    const double latitude = 93.27191 + 483202.017538 * t;
    const double node = 125.04452 - 1934.136261 * t;
    double sum = 0;
    for (const NutationTerm& term : kNutation) {
        const double angle = term.elongation * elongation + term.sun * sun + term.moon * moon +
                             term.latitude * latitude + term.node * node;
        sum += (term.amplitude + term.change * t) * std::sin(Radians(angle));
    }
    return sum * 1e-4 * kArcSecond;
}

/// The longitude within 0.01 degrees, thirty times faster (Meeus, chapter 25).
double RoughLongitude(JulianDay dynamicalTime)
{
    const double t = (dynamicalTime - kNoonOf2000) / kDaysOfCentury;
    const double anomaly = Radians(357.52911 + 35999.05029 * t);
    const double centre = (1.914602 - 0.004817 * t) * std::sin(anomaly) +
                          0.019993 * std::sin(2 * anomaly) + 0.000289 * std::sin(3 * anomaly);
    const double node = Radians(125.04 - 1934.136 * t);
    return Turned(280.46646 + (36000.76983 + 0.0003032 * t) * t + centre - 0.00569 -
                  0.00478 * std::sin(node));
}

/// How far the sun has to go to a longitude, in degrees [-180:180).
double Way(double from, double to)
{
    return Turned(to - from + 180) - 180;
}

/// The dynamical time of `RoughSunMoment`.
JulianDay RoughTime(int gregorianYear, double degrees)
{
    // The sun is at 280 degrees when the year begins.
    const JulianDay start = Greenwich().StartOf(NewYearsDay(gregorianYear));
    JulianDay time = start + Turned(degrees - 280) * kDaysOfDegree;
    for (int step = 0; step < 3; ++step)
        time += Way(RoughLongitude(time), degrees) * kDaysOfDegree;
    return time;
}

} // namespace

double SunLongitude(JulianDay dynamicalTime)
{
    const double centuries = (dynamicalTime - kNoonOf2000) / kDaysOfCentury;
    const double t = centuries / 10;
    const double earth =
        Sum(kEarthLongitude0, t) + t * Sum(kEarthLongitude1, t) + t * t * Sum(kEarthLongitude2, t);
    const double anomaly = Radians(357.52911 + 35999.05029 * centuries);
    const double distance = 1.00014 - 0.01671 * std::cos(anomaly) - 0.00014 * std::cos(2 * anomaly);
    const double aberration = -20.4898 * kArcSecond / distance;
    const double toFk5 = -0.09033 * kArcSecond; // from the dynamical equinox
    return Turned(earth * (180 / std::numbers::pi) + 180 + toFk5 + Nutation(centuries) +
                  aberration);
}

int SunTwelfth(JulianDay moment)
{
    const JulianDay time = moment + DeltaT(moment);
    const double rough = RoughLongitude(time);
    const double beyond = rough - 30 * std::floor(rough / 30);
    const bool clear = beyond > 0.02 && beyond < 29.98;
    return static_cast<int>((clear ? rough : SunLongitude(time)) / 30);
}

JulianDay RoughSunMoment(int gregorianYear, double degrees)
{
    const JulianDay time = RoughTime(gregorianYear, degrees);
    return time - DeltaT(time);
}

JulianDay SunMoment(int gregorianYear, double degrees)
{
    JulianDay time = RoughTime(gregorianYear, degrees);
    for (int step = 0; step < 2; ++step)
        time += Way(SunLongitude(time), degrees) * kDaysOfDegree;
    return time - DeltaT(time);
}

} // namespace orrery::holidays::calendars
