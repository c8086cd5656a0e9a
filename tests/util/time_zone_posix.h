#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace orrery::testing_support {

/// Sets the program's time zone until the end of the scope. In "XXX-1" the clocks are one hour
/// ahead of those in Greenwich.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone)
    {
        if (const char* const old = std::getenv("TZ"))
            old_ = old;
        ::setenv("TZ", zone, 1);
        ::tzset();
    }
    ~ScopedTimeZone()
    {
        if (old_)
            ::setenv("TZ", old_->c_str(), 1);
        else
            ::unsetenv("TZ");
        ::tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

private:
    std::optional<std::string> old_;
};

/// Half past eleven in the evening of 31 December 2026 in Greenwich.
inline constexpr std::time_t kNewYearsEve = 1798759800;

} // namespace orrery::testing_support
