#pragma once

#include <string>
#include <string_view>

/// The source of a module: lines of attributes, which say what it is, and its code, in the
/// project's code page.
namespace orrery::vba {

/// Whether there is more than attributes and empty lines.
bool HasCode(std::string_view source);

/// The source with the name `copy` in place of `model`. Throws Error(DamagedWorkbook) without a
/// subject if it does not say that its name is `model`.
std::string RenameModule(std::string_view source, std::string_view model, std::string_view copy);

} // namespace orrery::vba
