#include "app/system_country.h"

#include <array>
#include <windows.h>

namespace orrery::app {

std::string SystemCountry()
{
    std::array<char, 16> code{};
    const int size = GetGeoInfoA(GetUserGeoID(GEOCLASS_NATION), GEO_ISO2, code.data(),
                                 static_cast<int>(code.size()), 0);
    return size == 3 ? std::string(code.data()) : std::string(); // two letters and the end
}

} // namespace orrery::app
