#include "ui/folders.h"

#include "util/paths.h"

#include <filesystem>
#include <system_error>

namespace orrery::ui {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSettingsName = "orrery.ini";
constexpr const char* kTipsName = "tips.txt";

Locations LocationsIn(const std::string& configFolder, const std::string& dataFolder)
{
    return {configFolder + kSettingsName, dataFolder, dataFolder + kTipsName};
}

void CopyIfMissing(const fs::path& from, const fs::path& to)
{
    std::error_code absorbed;
    fs::create_directories(to.parent_path(), absorbed);
    fs::copy(from, to, fs::copy_options::recursive | fs::copy_options::skip_existing, absorbed);
}

} // namespace

Locations LocationsFor(const SystemFolders& system)
{
    const bool portable = util::FileExists(system.executable + kSettingsName);
    if (portable || system.config.empty() || system.data.empty())
        return LocationsIn(system.executable, system.executable);
    const std::string own = std::string("orrery") + util::kSeparator;
    return LocationsIn(system.config + own, system.data + own);
}

Locations LocationsBeside(const std::string& settingsFile)
{
    const fs::path file = fs::absolute(util::ToPath(settingsFile)).lexically_normal();
    const std::string folder = util::WithTrailingSeparator(util::FromPath(file.parent_path()));
    return {util::FromPath(file), folder, folder + kTipsName};
}

void FillAtFirstStart(const Locations& locations, const std::string& installed)
{
    if (installed.empty() || util::FileExists(locations.settingsFile))
        return;
    const fs::path from = util::ToPath(installed);
    const fs::path folder = util::ToPath(locations.folder);
    for (const char* name : {"holiday", "template", kTipsName})
        CopyIfMissing(from / name, folder / name);
    // Last: the settings file says that the first start is done.
    CopyIfMissing(from / kSettingsName, util::ToPath(locations.settingsFile));
}

} // namespace orrery::ui
