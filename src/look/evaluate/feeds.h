#pragma once

#include "look/evaluate/engine.h"

#include <set>

namespace orrery::formula {

/// Whether a formula cell reads a written cell, at however many removes; also if that cannot be
/// told. `unfed` are cells known not to; it grows.
bool IsFedByWritten(Engine& engine, const CellKey& formula, const std::set<CellKey>& written,
                    std::set<CellKey>& unfed);

} // namespace orrery::formula
