#pragma once

#include "book/spreadsheet.h"

#include <memory>

namespace orrery::excel {

/// Whether Excel is registered on this machine.
bool IsInstalled();

/// Starts an instance of its own, out of sight; one that the user has open is never taken. It goes
/// on running once it was made visible; else it ends with the object. Throws Error(EngineMissing)
/// where there is no Excel, Error(ApplicationFailure) where it does not start.
std::unique_ptr<book::Application> CreateApplication();

} // namespace orrery::excel
