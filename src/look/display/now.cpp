#include "look/display/now.h"

#include <chrono>

namespace orrery::look {

double LocalSerial(std::time_t moment)
{
    using namespace std::chrono;
    constexpr sys_days dayZero = 1899y / December / 30;
    constexpr int firstYear = 1900; // of the fields of std::tm
    constexpr double secondsOfDay = 86400;
    const std::tm& local = *std::localtime(&moment);
    const sys_days day = year(local.tm_year + firstYear) /
                         month(static_cast<unsigned>(local.tm_mon + 1)) / local.tm_mday;
    const int seconds = (local.tm_hour * 60 + local.tm_min) * 60 + local.tm_sec;
    return static_cast<double>((day - dayZero).count()) + seconds / secondsOfDay;
}

} // namespace orrery::look
