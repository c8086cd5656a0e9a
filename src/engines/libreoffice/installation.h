#pragma once

#include <filesystem>
#include <optional>

namespace orrery::libreoffice {

/// The folder with LibreOffice's programs and libraries: that of the one on the search path, else
/// of one where distributions and LibreOffice's own packages put it. Nothing if there is none, or
/// only one in a container, which other programs cannot drive.
std::optional<std::filesystem::path> FindInstallation();

} // namespace orrery::libreoffice
