#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace orrery::zip {

/// A new file that is written from front to end, in large pieces.
class OutputFile {
public:
    /// Creates or empties it. Throws Error as `util::MakeWriteError` makes it.
    explicit OutputFile(std::filesystem::path path);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// The offset of the next byte.
    std::uint64_t Position() const { return written_ + buffer_.size(); }
    /// Throws like the constructor.
    void Write(std::string_view bytes);
    /// Throws like the constructor.
    void Close();
    /// Closes and removes it.
    void Discard();

private:
    void Flush();
    [[noreturn]] void Fail() const;

    std::filesystem::path path_;
    std::filebuf file_;
    std::string buffer_;
    std::uint64_t written_ = 0;
};

} // namespace orrery::zip
