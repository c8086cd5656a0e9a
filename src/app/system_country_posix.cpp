#include "app/system_country.h"

#include "app/countries.h"

#include <cstdlib>

namespace orrery::app {

std::string SystemCountry()
{
    // In the order in which they overrule each other, POSIX.1-2017 8.2.
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* const value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return CountryOfLocale(value);
    }
    return {};
}

} // namespace orrery::app
