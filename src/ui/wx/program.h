#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::ui::wx {

/// The output of an option that opens no window ("--version", "--help"); nothing for other texts.
std::optional<std::string> OptionOutput(std::string_view option);

/// Creates the program that `wxEntry` runs.
void RegisterApplication();

} // namespace orrery::ui::wx
