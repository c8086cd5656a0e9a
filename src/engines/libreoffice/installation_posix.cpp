#include "engines/libreoffice/installation.h"

#include "util/text.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
/// LibreOffice's libraries keep type descriptions until the end, which is not a leak of this
/// program.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libuno_cppu.so\nleak:libuno_sal.so\n";
}

extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0";
}
#endif

namespace orrery::libreoffice {
namespace {

namespace fs = std::filesystem;

bool IsProgramFolder(const fs::path& folder)
{
    std::error_code absent;
    return std::ranges::all_of(
        std::vector{"soffice", "soffice.bin", "types.rdb", "libuno_cppuhelpergcc3.so.3"},
        [&](const char* file) { return fs::exists(folder / file, absent); });
}

/// The folders of the programs with LibreOffice's names on the search path.
std::vector<fs::path> OnSearchPath()
{
    std::vector<fs::path> folders;
    const char* const path = std::getenv("PATH");
    for (const std::string& folder : util::Split(path == nullptr ? "" : path, ':')) {
        for (const char* const name : {"soffice", "libreoffice"}) {
            std::error_code absent;
            const fs::path program = fs::canonical(fs::path(folder) / name, absent);
            if (!absent)
                folders.push_back(program.parent_path());
        }
    }
    return folders;
}

/// Where LibreOffice's own packages put it, "/opt/libreoffice24.8/program"; the newest first.
std::vector<fs::path> InOpt()
{
    std::vector<fs::path> folders;
    std::error_code absent;
    for (const auto& entry : fs::directory_iterator("/opt", absent)) {
        if (entry.path().filename().string().starts_with("libreoffice"))
            folders.push_back(entry.path() / "program");
    }
    std::ranges::sort(folders, std::greater());
    return folders;
}

} // namespace

std::optional<fs::path> FindInstallation()
{
    std::vector<fs::path> folders = OnSearchPath();
    for (const char* const folder :
         {"/usr/lib/libreoffice/program", "/usr/lib64/libreoffice/program"})
        folders.emplace_back(folder);
    std::ranges::copy(InOpt(), std::back_inserter(folders));
    const auto found = std::ranges::find_if(folders, IsProgramFolder);
    return found == folders.end() ? std::nullopt : std::optional(*found);
}

} // namespace orrery::libreoffice
