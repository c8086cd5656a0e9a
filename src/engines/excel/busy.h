#pragma once

#include "engines/excel/com.h"

#include <chrono>
#include <optional>

namespace orrery::excel {

/// How long one call is repeated before the application counts as lost.
inline constexpr std::chrono::milliseconds kBusyLimit = std::chrono::minutes(1);

/// Whether a call was rejected only for now.
bool IsBusy(HRESULT result);

/// The pause before a call that has waited that long is repeated. It grows from 100 to 1000 ms and
/// is cut to end at the limit; nothing when the limit is reached.
std::optional<std::chrono::milliseconds> PauseAfter(std::chrono::milliseconds waited);

} // namespace orrery::excel
