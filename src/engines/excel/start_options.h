#pragma once

#include "book/patience.h"

#include <filesystem>
#include <functional>
#include <vector>

namespace orrery::excel {

/// Looks at a workbook before Excel opens it. Throws Error if Excel is not to see it.
using OpeningCheck = std::function<void(const std::filesystem::path&)>;

/// What an instance is started with.
struct StartOptions {
    OpeningCheck checkBeforeOpening = {};          ///< may be empty
    std::vector<std::filesystem::path> files = {}; ///< that it will open and save
    book::Patience* patience = nullptr;            ///< outlives the instance; may be null
};

} // namespace orrery::excel
