#include "app/today.h"

namespace orrery::app {

YearAndMonth LocalMonth(std::time_t moment)
{
    constexpr int firstYear = 1900;
    const std::tm& local = *std::localtime(&moment);
    return {static_cast<std::int16_t>(local.tm_year + firstYear),
            static_cast<std::int16_t>(local.tm_mon + 1)};
}

} // namespace orrery::app
