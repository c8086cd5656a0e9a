#pragma once

#include "util/file_read.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::zip {

/// A file of which a piece is kept in memory: what is read near what was read before costs no call
/// to the system.
class FileWindow {
public:
    /// The most bytes that can be read at once.
    static constexpr std::size_t kMost = std::size_t{1} << 18U;

    /// Throws Error as `util::InputFile` does.
    explicit FileWindow(const std::filesystem::path& path)
        : path_(path), file_(path), stamp_(file_->Opened())
    {
    }

    const std::filesystem::path& Path() const { return path_; }
    /// In bytes, when it was opened.
    std::uint64_t Size() const { return stamp_.size; }
    /// The `count` bytes from an offset on, fewer only where the file ends; valid until the next
    /// call. Throws Error(FileNotReadable), and after `Close` as the constructor.
    std::string_view Read(std::uint64_t offset, std::size_t count);
    /// Throws Error(FileNotReadable) if another program changed the file since it was opened. It is
    /// not closed.
    void CheckUnchanged() const { file_->CheckUnchanged(); }
    /// Closes the file, so that other programs can replace it, until what is not in memory is read.
    void Close() { file_.reset(); }

private:
    void Open();

    std::filesystem::path path_;
    std::optional<util::InputFile> file_;
    util::InputFile::Stamp stamp_;
    std::string piece_;
    std::uint64_t begin_ = 0; // of the piece in the file
};

} // namespace orrery::zip
