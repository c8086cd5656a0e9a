#include "app/folders.h"

#include "util/error.h"
#include "util/file_read.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <string_view>

namespace orrery::app {
namespace {

constexpr const char* kSettingsName = "orrery.ini";
constexpr const char* kTipsName = "tips.txt";

Locations LocationsIn(const std::string& configFolder, const std::string& dataFolder)
{
    return {configFolder + kSettingsName, dataFolder, dataFolder + kTipsName};
}

/// Writes the whole file or nothing, so that an interrupted start leaves no half file behind. False
/// if it cannot be written; the program works without it.
bool WriteIfPossible(const std::string& file, const std::string& bytes)
{
    util::EnsureFolder(util::ParentFolder(file));
    try {
        util::ReplaceFile(util::ToPath(file), bytes);
        return true;
    }
    catch (const util::Error&) {
        return false;
    }
}

/// False if the copy cannot be written.
bool CopyIfMissing(const std::string& from, const std::string& to)
{
    if (!util::IsMissing(util::ToPath(to)))
        return true;
    const auto bytes = util::ReadFile(util::ToPath(from));
    return !bytes || WriteIfPossible(to, *bytes);
}

/// Whether a settings file has the places of windows and nothing else. They are also saved where
/// the first start found nothing to copy.
bool HasOnlyPlaces(std::string_view settings)
{
    bool hasPlaces = false;
    for (const std::string_view line : util::SplitLines(settings)) {
        const std::string_view header = util::Trim(line);
        if (!header.starts_with('['))
            continue;
        if (!util::EqualIgnoringCase(header, std::string("[") + kPlacesSection + ']'))
            return false;
        hasPlaces = true;
    }
    return hasPlaces;
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
    const auto settingsFile = util::ToPath(locations.settingsFile);
    const std::string places = util::ReadTextFile(settingsFile).value_or("");
    if (installed.empty() || (!util::IsMissing(settingsFile) && !HasOnlyPlaces(places)))
        return;
    bool isWhole = true;
    for (const std::string name : {"holiday", "template"}) {
        const std::string from = installed + name + util::kSeparator;
        const std::string to = locations.folder + name + util::kSeparator;
        for (const std::string& file : util::ListFiles(from))
            isWhole = CopyIfMissing(from + file, to + file) && isWhole;
    }
    isWhole = CopyIfMissing(installed + kTipsName, locations.tipsFile) && isWhole;
    // Last, because the settings file shows that the first start is done.
    const auto settings = util::ReadFile(util::ToPath(installed + kSettingsName));
    if (isWhole && settings)
        WriteIfPossible(locations.settingsFile,
                        places.empty() ? *settings : *settings + "\r\n" + places);
}

} // namespace orrery::app
