#pragma once

#include <filesystem>
#include <system_error>
#include <utility>

namespace orrery::util {

/// A file that another program writes before its bytes go to their place; removed at the end.
class ProgramOutput {
public:
    explicit ProgramOutput(std::filesystem::path path) : path_(std::move(path)) {}
    ~ProgramOutput()
    {
        std::error_code ignored; // the next one overwrites it
        std::filesystem::remove(path_, ignored);
    }
    ProgramOutput(const ProgramOutput&) = delete;
    ProgramOutput& operator=(const ProgramOutput&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace orrery::util
