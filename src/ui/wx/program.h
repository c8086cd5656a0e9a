#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::ui::wx {

/// The answer to an option that opens no window ("--version", "--help"); nothing for other texts.
std::optional<std::string> AnswerTo(std::string_view option);

/// Makes the program that the toolkit's entry runs.
void MakeProgram();

} // namespace orrery::ui::wx
