#pragma once

#include <filesystem>
#include <optional>

namespace orrery::libreoffice {

/// The folder that holds LibreOffice's programs and libraries: of the one that the search path
/// finds, else where distributions and LibreOffice's own packages put it. Nothing where there is
/// none, or it is one in a container that other programs cannot drive.
std::optional<std::filesystem::path> FindInstallation();

} // namespace orrery::libreoffice
