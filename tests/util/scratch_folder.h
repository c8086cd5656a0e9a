#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace orrery::testing_support {

/// An empty folder of its own for one test, removed with all it holds at the end.
class ScratchFolder {
public:
    ScratchFolder()
    {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("orrery-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~ScratchFolder()
    {
        std::error_code ignored; // a destructor has nobody to tell
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// What is below the folder by that name, which is UTF-8.
    std::filesystem::path operator/(std::string_view name) const
    {
        return path_ / std::u8string(name.begin(), name.end());
    }

    /// Writes a file and gives its path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const
    {
        const std::filesystem::path file = *this / name;
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    /// How many entries the folder has.
    std::ptrdiff_t Entries() const
    {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

private:
    std::filesystem::path path_;
};

/// The bytes of a file that must exist.
inline std::string BytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace orrery::testing_support
