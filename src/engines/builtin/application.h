#pragma once

#include "book/engines.h"

#include <memory>

namespace orrery::builtin {

/// The built-in application: opens, edits and saves workbooks itself. Becoming visible hands the
/// workbook that was saved last to the opener; without an opener nothing happens.
std::unique_ptr<book::Application> CreateApplication(book::Opener opener);

} // namespace orrery::builtin
