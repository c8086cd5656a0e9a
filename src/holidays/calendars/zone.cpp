#include "holidays/calendars/zone.h"

#include <array>
#include <cmath>

namespace orrery::holidays::calendars {
namespace {

constexpr JulianDay kStartOf1970 = 2440587.5;
constexpr int kHour = 3600;
constexpr double kSecondsOfDay = 86400.0;

constexpr int kUtc8 = 8 * kHour;
constexpr int kBeijing = 7 * kHour + 45 * 60 + 40; // mean time, 116° 25' east

// Before 1912 almanacs were computed with the tables of 1742; UTC+8 gives their months since 1900.
constexpr std::array kChinaChanges = {
    ZoneChange{std::chrono::year(1912) / 1 / 1, kBeijing},
    ZoneChange{std::chrono::year(1929) / 1 / 1, kUtc8},
};
constexpr std::array kKoreaChanges = {
    ZoneChange{std::chrono::year(1912) / 1 / 1, 9 * kHour},
    ZoneChange{std::chrono::year(1954) / 3 / 21, 8 * kHour + 1800},
    ZoneChange{std::chrono::year(1961) / 8 / 10, 9 * kHour},
};
constexpr std::array kVietnamChanges = {
    ZoneChange{std::chrono::year(1912) / 1 / 1, kBeijing},
    ZoneChange{std::chrono::year(1929) / 1 / 1, kUtc8},
    ZoneChange{std::chrono::year(1968) / 1 / 1, 7 * kHour},
};

constexpr Zone kChina(kUtc8, kChinaChanges);
constexpr Zone kKorea(kUtc8, kKoreaChanges);
constexpr Zone kVietnam(kUtc8, kVietnamChanges);
constexpr Zone kJapan(9 * kHour);
constexpr Zone kGreenwich(0);

} // namespace

int Zone::SecondsOn(Date date) const
{
    int seconds = seconds_;
    for (const ZoneChange& change : changes_)
        if (change.from <= date)
            seconds = change.seconds;
    return seconds;
}

Date Zone::DateAt(JulianDay moment) const
{
    const auto dateWith = [moment](int seconds) {
        const double day = std::floor(moment - kStartOf1970 + seconds / kSecondsOfDay);
        return Date(std::chrono::days(static_cast<int>(day)));
    };
    return dateWith(SecondsOn(dateWith(seconds_)));
}

JulianDay Zone::StartOf(Date date) const
{
    return kStartOf1970 + static_cast<double>(date.time_since_epoch().count()) -
           SecondsOn(date) / kSecondsOfDay;
}

const Zone& China()
{
    return kChina;
}

const Zone& Korea()
{
    return kKorea;
}

const Zone& Vietnam()
{
    return kVietnam;
}

const Zone& Japan()
{
    return kJapan;
}

const Zone& Greenwich()
{
    return kGreenwich;
}

} // namespace orrery::holidays::calendars
