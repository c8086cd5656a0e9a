#pragma once

#include "engines/excel/com.h"

#include <chrono>
#include <optional>

namespace orrery::excel {

/// How long one call is repeated before the application counts as gone.
inline constexpr std::chrono::milliseconds kBusyLimit = std::chrono::minutes(1);

/// Whether a call was turned away only for now.
bool IsBusy(HRESULT result);

/// The pause before a call that has waited so long is made again, [100:1000] ms and longer from
/// time to time; nothing when the limit is reached.
std::optional<std::chrono::milliseconds> PauseAfter(std::chrono::milliseconds waited);

} // namespace orrery::excel
