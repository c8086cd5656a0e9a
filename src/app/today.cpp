#include "app/today.h"

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

} // namespace orrery::app
