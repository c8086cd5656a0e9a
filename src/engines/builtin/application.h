#pragma once

#include "generate/spreadsheet.h"

#include <filesystem>
#include <functional>
#include <memory>

namespace orrery::builtin {

/// Opens a saved workbook for the user, with the desktop's own program.
using Opener = std::function<void(const std::filesystem::path&)>;

/// The built-in application: opens, edits and saves workbooks itself. Becoming visible hands the
/// workbook that was saved last to the opener; without an opener nothing happens.
std::unique_ptr<generate::Application> CreateApplication(Opener opener);

} // namespace orrery::builtin
