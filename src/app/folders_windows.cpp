#include "app/folders.h"
#include "util/paths.h"

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <windows.h>

#include <knownfolders.h>
#include <objbase.h>
#include <shlobj.h>

namespace orrery::app {
namespace {

namespace fs = std::filesystem;

std::string FolderText(const fs::path& folder)
{
    return util::WithTrailingSeparator(util::FromPath(folder));
}

fs::path ExecutableFolder()
{
    constexpr DWORD kLongest = 32768;
    std::wstring path(kLongest, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kLongest));
    return fs::path(path).parent_path();
}

/// A folder of the user, or empty if the system has none.
std::string UserFolder(const KNOWNFOLDERID& id)
{
    PWSTR path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DEFAULT, nullptr, &path);
    const std::unique_ptr<wchar_t, decltype(&CoTaskMemFree)> owned(path, &CoTaskMemFree);
    return result == S_OK ? FolderText(path) : std::string();
}

std::string ExistingFolder(const fs::path& folder)
{
    std::error_code absent;
    return fs::is_directory(folder, absent) ? FolderText(folder) : std::string();
}

} // namespace

SystemFolders FindSystemFolders()
{
    const fs::path executable = ExecutableFolder();
    return {FolderText(executable),
            UserFolder(FOLDERID_RoamingAppData),
            UserFolder(FOLDERID_Documents),
            ExistingFolder(executable / "data"),
            FolderText(executable), // contains Orrery.chm
            true};
}

} // namespace orrery::app
