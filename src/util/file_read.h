#pragma once

#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace orrery::util {

/// Most bytes of a text file that is read: parameters, settings, holidays, tips.
inline constexpr std::uint64_t kMostText = std::uint64_t{16} << 20U;

/// A regular file that is open for reading; links are followed. Whatever else bears the name, such
/// as a folder, a device or a pipe, is refused at once: nothing waits for it.
class InputFile {
public:
    /// Throws Error (FileNotFound, FileNotReadable, NotARegularFile).
    explicit InputFile(const std::filesystem::path& path);

    /// In bytes, when it was opened.
    std::uint64_t Size() const { return stamp_.size; }
    /// Throws Error(FileNotReadable) where the file has another size or time of change than when it
    /// was opened: another program is writing it.
    void CheckUnchanged() const;
    /// The next bytes, fewer than `count` only at the end. Throws Error(FileNotReadable).
    std::size_t Read(char* buffer, std::size_t count);
    /// All bytes that follow. Throws Error (FileNotReadable; TextFileTooLarge where there are more,
    /// even if it has grown to that size meanwhile), also where another program changes the file
    /// while it is read.
    std::string ReadAll(std::uint64_t most);

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::filesystem::path path_;
    struct Stamp {
        std::uint64_t size = 0;
        std::int64_t changed = 0; // in the system's units, from its own beginning
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    static std::optional<Stamp> StampOf(std::FILE* file);
    Stamp stamp_;
    std::unique_ptr<std::FILE, Closer> file_;
};

/// The bytes of a regular file, or nothing when it cannot be read.
std::optional<std::string> ReadFile(const std::filesystem::path& path);
/// The same of a text file. One beyond `kMostText` gives nothing, without being read; one that
/// grows beyond it meanwhile, too.
std::optional<std::string> ReadTextFile(const std::filesystem::path& path);

/// Why the file cannot be opened for reading: FileNotFound, FileNotReadable, NotARegularFile.
/// Nothing where it can.
std::optional<Error> ReadingObstacle(const std::filesystem::path& path);
/// The same of a text file, for which there is TextFileTooLarge, too.
std::optional<Error> TextObstacle(const std::filesystem::path& path);
/// The same of a text file that need not exist: one that is missing, or lies where nothing can be
/// seen, is no obstacle.
std::optional<Error> ObstacleOfExistingText(const std::filesystem::path& path);
/// Why the folder cannot be listed: FileNotFound, FileNotReadable. Nothing where it can.
std::optional<Error> ListingObstacle(const std::filesystem::path& folder);

/// Whether the name leads to nothing. A file that is there and cannot be read is not missing.
bool IsMissing(const std::filesystem::path& path);

} // namespace orrery::util
