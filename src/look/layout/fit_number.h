#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orrery::look {

using FitsRoom = std::function<bool(std::string_view text)>;

/// A number in the format General with as many digits as fit: first fewer decimals, then a power of
/// ten ("1.2E+09"). Empty if not even that fits. Tries at most 32 texts.
std::string FitGeneralNumber(double number, const FitsRoom& fits);

/// As many number signs as fit, at least one.
std::string NumberSigns(double room, double widthOfOne);

} // namespace orrery::look
