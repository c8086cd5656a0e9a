#include "util/paths.h"
#include "util/profile.h"
#include "util/profile_file.h"

#include <utility>

namespace orrery::util {

struct Profile::Content : ProfileFile {
    using ProfileFile::ProfileFile;
};

Profile::Profile(std::filesystem::path file) : file_(std::move(file)) {}

std::string Profile::Read(std::string_view section, std::string_view key,
                          std::string_view fallback) const
{
    if (!content_)
        content_ = std::make_shared<Content>(file_);
    return content_->FindValue(section, key).value_or(std::string(fallback));
}

bool Profile::Write(std::string_view section, std::string_view key, std::string_view value) const
{
    if (value.find_first_of("\r\n") != std::string_view::npos)
        return false;
    EnsureFolder(ParentFolder(FromPath(file_)));
    content_.reset();
    return WriteProfileFile(file_, section, key, value);
}

} // namespace orrery::util
