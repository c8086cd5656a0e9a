#pragma once

#include "util/descriptor.h"

#include <filesystem>

namespace orrery::libreoffice {

/// A user profile of LibreOffice that no other instance uses, one of several that are kept, apart
/// from the user's own settings. It is in use as long as a process holds its lock.
class ProfileFolder {
public:
    /// Takes the first unused one in the folder, or creates one. Throws Error (FolderNotCreated,
    /// FileNotWritable).
    explicit ProfileFolder(const std::filesystem::path& profiles);

    const std::filesystem::path& Path() const { return path_; }
    /// A folder in it for temporary files.
    std::filesystem::path TemporaryPath() const { return path_ / "temporary"; }
    /// The instance inherits it.
    int Lock() const { return lock_.Number(); }
    /// Removes its content: an instance that was killed may have left it damaged.
    void Clear() const;

private:
    std::filesystem::path path_;
    util::Descriptor lock_;
};

} // namespace orrery::libreoffice
