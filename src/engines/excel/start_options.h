#pragma once

#include <filesystem>
#include <functional>

namespace orrery::excel {

/// Looks at a workbook before Excel opens it. Throws Error if Excel is not to see it.
using OpeningCheck = std::function<void(const std::filesystem::path&)>;

/// What an instance is started with.
struct StartOptions {
    OpeningCheck checkBeforeOpening = {}; ///< may be empty
};

} // namespace orrery::excel
