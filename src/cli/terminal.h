#pragma once

namespace orrery::cli {

/// Whether somebody watches standard error.
bool ErrorOutputIsTerminal();

} // namespace orrery::cli
