#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace orrery::testing_support {

/// An empty folder for one test, removed with its content at the end.
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
        std::error_code ignored; // a destructor cannot report it
        std::filesystem::remove_all(path_, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    /// The path of a name (UTF-8) in the folder.
    std::filesystem::path operator/(std::string_view name) const
    {
        return path_ / std::u8string(name.begin(), name.end());
    }

    /// Writes a file and returns its path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const
    {
        const std::filesystem::path file = *this / name;
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }

    /// Number of entries in the folder.
    std::ptrdiff_t Entries() const
    {
        return std::distance(std::filesystem::directory_iterator(path_), {});
    }

private:
    std::filesystem::path path_;
};

/// The content of a file, which must exist.
inline std::string BytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace orrery::testing_support
