#pragma once

#include "book/engines.h"

#include <memory>

namespace orrery::builtin {

/// The built-in application, which opens, edits and saves workbooks itself. When it is made
/// visible, it passes the last saved workbook to the opener, if there is one.
std::unique_ptr<book::Application> CreateApplication(book::Opener opener);

} // namespace orrery::builtin
