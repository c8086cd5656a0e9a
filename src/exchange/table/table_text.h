#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace orrery::exchange {

/// The largest file that is read, in bytes.
inline constexpr std::uint64_t kMostTableSize = 100'000'000;

/// The text of a file or of the clipboard, as it is taken apart: UTF-8, or the bytes of the
/// system's code page.
class TableText {
public:
    /// Bytes of a file: UTF-16 with a byte-order mark, UTF-8, or the code page. Throws Error
    /// (NotAText) if they have a NUL; the subject is the name.
    TableText(std::string bytes, const std::string& name);

    std::string_view Bytes() const { return bytes_; }
    /// A part of the bytes in UTF-8.
    std::string Decode(std::string_view part) const;

private:
    std::string bytes_;
    bool isCodePage_ = false;
};

/// Throws Error (FileTooLarge, NotAText) and what `InputFile` throws.
TableText LoadTableText(const std::filesystem::path& path);

} // namespace orrery::exchange
