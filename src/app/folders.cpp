#include "app/folders.h"

#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"

namespace orrery::app {
namespace {

constexpr const char* kSettingsName = "orrery.ini";
constexpr const char* kTipsName = "tips.txt";

Locations LocationsIn(const std::string& configFolder, const std::string& dataFolder)
{
    return {configFolder + kSettingsName, dataFolder, dataFolder + kTipsName};
}

/// Copies the whole file or nothing, so that an interrupted start leaves no half file behind.
void CopyIfMissing(const std::string& from, const std::string& to)
{
    if (!util::IsMissing(util::ToPath(to)))
        return;
    const auto bytes = util::ReadFile(util::ToPath(from));
    if (!bytes)
        return;
    util::EnsureFolder(util::ParentFolder(to));
    try {
        util::ReplaceFile(util::ToPath(to), *bytes);
    }
    catch (const util::Error&) {
        return; // the program works without the file
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

void CopyInstalledFiles(const Locations& locations, const std::string& installed)
{
    if (installed.empty() || !util::IsMissing(util::ToPath(locations.settingsFile)))
        return;
    for (const std::string name : {"holiday", "template"}) {
        const std::string from = installed + name + util::kSeparator;
        const std::string to = locations.folder + name + util::kSeparator;
        for (const std::string& file : util::ListFiles(from))
            CopyIfMissing(from + file, to + file);
    }
    CopyIfMissing(installed + kTipsName, locations.tipsFile);
    // Last, because the settings file shows that the first start is done.
    CopyIfMissing(installed + kSettingsName, locations.settingsFile);
}

} // namespace orrery::app
