#include "app/folders.h"
#include "util/paths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace orrery::app {
namespace {

namespace fs = std::filesystem;

std::string FolderText(const fs::path& folder)
{
    return util::WithTrailingSeparator(util::FromPath(folder));
}

fs::path ExecutableFolder()
{
    std::error_code failure;
    const fs::path executable = fs::read_symlink("/proc/self/exe", failure);
    return failure ? fs::current_path() : executable.parent_path();
}

fs::path AbsoluteFromEnvironment(const char* variable)
{
    const char* const value = std::getenv(variable);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

/// An XDG folder, or its default in the home folder.
std::string UserFolder(const char* variable, const char* inHome)
{
    const fs::path set = AbsoluteFromEnvironment(variable);
    if (!set.empty())
        return FolderText(set);
    const fs::path home = AbsoluteFromEnvironment("HOME");
    return home.empty() ? std::string() : FolderText(home / inHome);
}

/// The folder of the installation, or else of the build tree, if it exists.
std::string FindFolder(const fs::path& installed, const fs::path& built)
{
    for (const fs::path& folder : {installed.lexically_normal(), built}) {
        std::error_code absent;
        if (fs::is_directory(folder, absent))
            return FolderText(folder);
    }
    return {};
}

} // namespace

SystemFolders FindSystemFolders()
{
    const fs::path executable = ExecutableFolder();
    const fs::path share = executable / "../share/orrery";
    return {FolderText(executable), UserFolder("XDG_CONFIG_HOME", ".config"),
            UserFolder("XDG_DATA_HOME", ".local/share"), FindFolder(share, ORRERY_DATA_DIR),
            FindFolder(share / "help", ORRERY_HELP_DIR)};
}

} // namespace orrery::app
