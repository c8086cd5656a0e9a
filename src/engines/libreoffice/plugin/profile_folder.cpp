#include "engines/libreoffice/plugin/profile_folder.h"

#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/system_message.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <system_error>

namespace orrery::libreoffice {
namespace {

namespace fs = std::filesystem;

/// The settings of a new profile: no welcome, no question when the user saves in Excel's format,
/// and absolute links, since a file is moved to its place after it was stored.
constexpr const char* kSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowDonation" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Save/Document"><prop oor:name="WarnAlienFormat" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Save/URL"><prop oor:name="FileSystem" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)";

/// Not open if another instance holds the lock.
util::Descriptor TakeLock(const fs::path& path)
{
    util::Descriptor lock(::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (lock.IsOpen() && ::flock(lock.Number(), LOCK_EX | LOCK_NB) == 0)
        return lock;
    if (!lock.IsOpen() || errno != EWOULDBLOCK)
        throw Error(util::ErrorKind::FileNotWritable, util::FromPath(path),
                    util::SystemMessage({errno, std::generic_category()}));
    return util::Descriptor();
}

void MakeFolder(const fs::path& folder)
{
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (failure)
        throw Error(util::ErrorKind::FolderNotCreated, util::FromPath(folder),
                    util::SystemMessage(failure));
}

} // namespace

ProfileFolder::ProfileFolder(const fs::path& profiles)
{
    MakeFolder(profiles);
    for (int number = 1; !lock_.IsOpen(); ++number) {
        path_ = profiles / std::to_string(number);
        lock_ = TakeLock(profiles / (std::to_string(number) + ".lock"));
    }
    std::error_code ignored;
    fs::remove_all(TemporaryPath(), ignored); // left by an instance that was killed
    MakeFolder(TemporaryPath());
    const fs::path settings = path_ / "user" / "registrymodifications.xcu";
    if (!fs::exists(settings)) {
        MakeFolder(settings.parent_path());
        util::ReplaceFile(settings, kSettings);
    }
}

void ProfileFolder::Clear() const
{
    std::error_code ignored; // the next instance can cope with a file that stays
    fs::remove_all(path_, ignored);
}

} // namespace orrery::libreoffice
