#pragma once

#include <string>

namespace orrery::app {

// Folder texts are UTF-8 and end in a separator; an empty one means that there is none.

/// What the system says about this program and its user.
struct SystemFolders {
    std::string executable; ///< the folder that the program was started from
    std::string config;     ///< the user's settings of all programs; empty: no home
    std::string data;       ///< the user's data of all programs; empty: no home
    std::string installed;  ///< what was installed for everybody; empty: nothing
    std::string help = {};  ///< the pages of the help; empty: not known
    /// Whether programs of this system keep their things beside themselves where they can.
    bool besideExecutable = false;
};

/// Asks the system. A relative XDG folder counts as unset.
SystemFolders FindSystemFolders();

/// Where the program's own things live.
struct Locations {
    std::string settingsFile; ///< orrery.ini; need not exist
    std::string folder;       ///< holds template, output and holiday folder unless set otherwise
    std::string tipsFile;
};

/// Beside the executable where an orrery.ini stands there, where the system has it so and the
/// folder can be written, or where the user has no home; else in the user's own folders.
Locations LocationsFor(const SystemFolders& system);

/// Everything beside the given settings file. A relative path counts from the current folder.
Locations LocationsBeside(const std::string& settingsFile);

/// At the first start, when the settings file does not exist, copies what is installed: the
/// settings file, the tips, the holiday files and the templates. Files that are there stay. A
/// failure is absorbed: every setting has a default.
void FillAtFirstStart(const Locations& locations, const std::string& installed);

} // namespace orrery::app
