#pragma once

#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::util {

/// Size limit of text files in bytes: parameters, settings, holidays, tips.
inline constexpr std::uint64_t kMaxTextFileSize = std::uint64_t{16} << 20U;

/// A regular file that is open for reading; links are followed. Anything else, such as a folder, a
/// device or a pipe, is refused without waiting for it.
class InputFile {
public:
    /// What tells that a file was changed.
    struct Stamp {
        std::uint64_t size = 0;
        std::int64_t modified = 0; ///< time of the last change, in the system's units and epoch
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };

    /// Throws Error (FileNotFound, FileNotReadable, NotARegularFile).
    explicit InputFile(const std::filesystem::path& path);

    /// In bytes, when it was opened.
    std::uint64_t Size() const { return stamp_.size; }
    /// Throws Error(FileNotReadable) if the file's size or modification time changed since it was
    /// opened: another program is writing it.
    void CheckUnchanged() const { CheckUnchangedSince(stamp_); }
    /// The same, since another opening of the file.
    void CheckUnchangedSince(const Stamp& stamp) const;
    const Stamp& Opened() const { return stamp_; }
    /// Reads the next bytes, fewer than `count` only at the end. Throws Error(FileNotReadable).
    std::size_t Read(char* buffer, std::size_t count);
    /// The next bytes are those from this offset on. Throws Error(FileNotReadable).
    void Seek(std::uint64_t offset);
    /// Reads all remaining bytes. Throws Error: TextFileTooLarge if the file has, or grows to, more
    /// than `maxSize` bytes; FileNotReadable, also if another program changes the file meanwhile.
    std::string ReadAll(std::uint64_t maxSize);

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::filesystem::path path_;
    static std::optional<Stamp> StampOf(std::FILE* file);
    Stamp stamp_;
    std::unique_ptr<std::FILE, Closer> file_;
};

/// The bytes of a regular file, or nothing if it cannot be read.
std::optional<std::string> ReadFile(const std::filesystem::path& path);
/// The same for a text file. Nothing also if it is larger than `kMaxTextFileSize`, or grows to that
/// while it is read.
std::optional<std::string> ReadTextFile(const std::filesystem::path& path);

/// Why the file cannot be opened for reading: FileNotFound, FileNotReadable, NotARegularFile.
/// Nothing if it can.
std::optional<Error> FindReadError(const std::filesystem::path& path);
/// The same for a text file, which can also be TextFileTooLarge.
std::optional<Error> FindTextReadError(const std::filesystem::path& path);
/// The same for an optional text file: no error if it is missing or its folder cannot be searched.
std::optional<Error> FindExistingTextReadError(const std::filesystem::path& path);
/// Why the folder cannot be listed: FileNotFound, FileNotReadable. Nothing if it can.
std::optional<Error> FindListError(const std::filesystem::path& folder);

/// Whether the file can be opened for reading; false for a folder. A trailing separator is ignored.
bool FileExists(std::string_view path);
/// Whether no such file exists. A file that exists but cannot be read is not missing.
bool IsMissing(const std::filesystem::path& path);

} // namespace orrery::util
