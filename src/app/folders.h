#pragma once

#include <string>

namespace orrery::app {

// Folder texts are UTF-8 and end in a separator; empty means that there is none.

/// Folders that the system knows for this program and its user.
struct SystemFolders {
    std::string executable; ///< the folder of the program's executable file
    std::string config;     ///< the user's settings of all programs; empty without a home folder
    std::string data;       ///< the user's data of all programs; empty without a home folder
    std::string installed;  ///< the data installed for all users; empty if none is
    std::string help = {};  ///< the help pages; empty if unknown
    /// Whether programs on this system keep their files beside the executable if they can.
    bool besideExecutable = false;
};

/// Asks the system. A relative XDG folder counts as unset.
SystemFolders FindSystemFolders();

/// Where the program's own files are.
struct Locations {
    std::string settingsFile; ///< orrery.ini; need not exist
    std::string folder;       ///< contains the template, output and holiday folders by default
    std::string tipsFile;
};

/// The section of the settings file with the places of windows.
inline constexpr const char* kPlacesSection = "Windows";

/// Beside the executable if there is an orrery.ini, if the system prefers that and the folder is
/// writable, or if the user has no home folder; else in the user's own folders.
Locations LocationsFor(const SystemFolders& system);

/// Everything beside the given settings file. A relative path starts at the current folder.
Locations LocationsBeside(const std::string& settingsFile);

/// At the first start, when there is no settings file or only places of windows in it, copies the
/// installed settings file, tips, holiday files and templates. Existing files stay. A file that
/// cannot be copied is passed over: every setting has a default, and the next start is then the
/// first one again.
void CopyInstalledFiles(const Locations& locations, const std::string& installed);

} // namespace orrery::app
