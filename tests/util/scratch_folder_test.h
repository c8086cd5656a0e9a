#pragma once

#include "util/paths.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace orrery::testing_support {

/// A test with its own scratch folder.
class ScratchFolderTest : public testing::Test {
protected:
    /// Writes a file in the folder and returns its path.
    std::string Write(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories((scratch_ / name).parent_path());
        scratch_.Write(name, text);
        return At(name);
    }
    /// The path of a name in the folder, with the system's separators.
    std::string At(const std::string& name) const
    {
        return util::FromPath((scratch_ / name).make_preferred());
    }

private:
    const ScratchFolder scratch_;

protected:
    const std::filesystem::path& folder_ = scratch_.Path();
};

} // namespace orrery::testing_support
