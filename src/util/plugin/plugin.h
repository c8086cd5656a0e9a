#pragma once

#include <filesystem>
#include <optional>

namespace orrery::util {

/// A library of this program that is loaded on demand ("orrery-pdf", without an ending): beside the
/// program, or where an installation has it. Nothing if it is not there.
std::optional<std::filesystem::path> FindPlugin(const char* name);

/// Loads such a library, for as long as the program runs, and returns its function; null if it
/// cannot be loaded or has no such function.
void* LoadPluginFunction(const std::filesystem::path& library, const char* function);

} // namespace orrery::util
