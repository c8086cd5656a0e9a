#include "ui/folders.h"

#include "util/file_replace.h"
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

void CopyIfMissing(const std::string& from, const std::string& to)
{
    std::error_code absorbed;
    if (util::FileExists(from) && !util::FileExists(to)) {
        util::EnsureFolder(util::ParentFolder(to));
        fs::copy_file(util::ToPath(from), util::ToPath(to), absorbed);
    }
}

} // namespace

Locations LocationsFor(const SystemFolders& system)
{
    const bool portable = util::FileExists(system.executable + kSettingsName) ||
                          (system.besideExecutable && util::CanWriteIn(system.executable));
    if (portable || system.config.empty() || system.data.empty())
        return LocationsIn(system.executable, system.executable);
    const std::string own = std::string("orrery") + util::kSeparator;
    return LocationsIn(system.config + own, system.data + own);
}

Locations LocationsBeside(const std::string& settingsFile)
{
    const std::string file = util::AbsolutePath(settingsFile);
    const std::string folder = util::ParentFolder(file) + util::kSeparator;
    return {file, folder, folder + kTipsName};
}

void FillAtFirstStart(const Locations& locations, const std::string& installed)
{
    if (installed.empty() || util::FileExists(locations.settingsFile))
        return;
    for (const std::string name : {"holiday", "template"}) {
        const std::string from = installed + name + util::kSeparator;
        const std::string to = locations.folder + name + util::kSeparator;
        for (const std::string& file : util::ListFiles(from))
            CopyIfMissing(from + file, to + file);
    }
    CopyIfMissing(installed + kTipsName, locations.tipsFile);
    // Last: the settings file says that the first start is done.
    CopyIfMissing(installed + kSettingsName, locations.settingsFile);
}

} // namespace orrery::ui
