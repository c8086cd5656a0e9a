#include "ui/controls.h"

#include "util/numbers.h"

#include <algorithm>
#include <cmath>

namespace orrery::ui {

void UpDown::Step(int step)
{
    const auto number = util::ReadNumber(buddy.text);
    const double stepped = number ? std::nearbyint(*number) + step : minimum;
    const double kept = std::clamp<double>(stepped, minimum, maximum);
    buddy.Type(std::to_string(static_cast<int>(kept)));
}

} // namespace orrery::ui
