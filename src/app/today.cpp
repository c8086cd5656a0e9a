#include "app/today.h"

#include <chrono>

namespace orrery::app {
namespace {

constexpr int kFirstYear = 1900; // of the fields of std::tm

} // namespace

YearAndMonth LocalMonth(std::time_t moment)
{
    const std::tm& local = *std::localtime(&moment);
    return {static_cast<std::int16_t>(local.tm_year + kFirstYear),
            static_cast<std::int16_t>(local.tm_mon + 1)};
}

double LocalSerial(std::time_t moment)
{
    using namespace std::chrono;
    constexpr sys_days dayZero = 1899y / December / 30;
    constexpr double secondsOfDay = 86400;
    const std::tm& local = *std::localtime(&moment);
    const sys_days day = year(local.tm_year + kFirstYear) /
                         month(static_cast<unsigned>(local.tm_mon + 1)) / local.tm_mday;
    const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return static_cast<double>((day - dayZero).count()) + seconds / secondsOfDay;
}

} // namespace orrery::app
