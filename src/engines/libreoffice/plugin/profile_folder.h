#pragma once

#include "util/descriptor.h"

#include <filesystem>

namespace orrery::libreoffice {

/// A user profile of LibreOffice that no other instance uses, one of several that are kept: the
/// settings of the person who uses the computer stay out of it. It is taken as long as a process
/// holds its lock.
class ProfileFolder {
public:
    /// Takes the first free one below the folder, or makes one. Throws Error (FolderNotCreated,
    /// FileNotWritable).
    explicit ProfileFolder(const std::filesystem::path& profiles);

    const std::filesystem::path& Path() const { return path_; }
    /// A folder in it for temporary files.
    std::filesystem::path TemporaryPath() const { return path_ / "temporary"; }
    /// To be inherited by the instance.
    int Lock() const { return lock_.Number(); }
    /// Removes what is in it: an instance that was ended by force may have left it damaged.
    void Clear() const;

private:
    std::filesystem::path path_;
    util::Descriptor lock_;
};

} // namespace orrery::libreoffice
