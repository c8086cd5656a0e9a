#pragma once

#include "util/scratch_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace orrery::ui {

/// A test with a folder of its own.
class ScratchFolderTest : public testing::Test {
protected:
    /// Writes a file below the folder and gives its path.
    std::string Write(const std::string& name, const std::string& text) const
    {
        std::filesystem::create_directories((folder_ / name).parent_path());
        return scratch_.Write(name, text).string();
    }
    /// The path of something below the folder.
    std::string At(const std::string& name) const { return (folder_ / name).string(); }

private:
    const testing_support::ScratchFolder scratch_;

protected:
    const std::filesystem::path& folder_ = scratch_.Path();
};

} // namespace orrery::ui
