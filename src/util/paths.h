#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::util {

// Path texts are UTF-8 with the separator "\". On systems whose separator is "/", both are read and
// "/" is written.

/// The system's own separator, "\" or "/".
extern const char kSeparator;

std::filesystem::path ToPath(std::string_view text);
std::string FromPath(const std::filesystem::path& path);

/// The file name without its last "." and what follows it.
std::string BaseName(std::string_view path);
/// The whole text after the last separator.
std::string FileName(std::string_view path);
/// The text before the last separator; empty if there is none.
std::string ParentFolder(std::string_view path);
/// Whether the path begins with two slashes of either kind.
bool IsNetworkPath(std::string_view path);
/// `path` relative to `base`; an absolute path is returned unchanged.
std::string ResolvePath(std::string_view base, std::string_view path);
/// The absolute path with "." and ".." resolved; a relative path starts at the current folder.
/// Throws Error(FileNotFound) if that folder is gone.
std::string AbsolutePath(std::string_view path);
/// Adds a separator at the end unless there is one; an empty text stays empty.
std::string WithTrailingSeparator(std::string_view folder);
/// Removes one separator at the end, if there is one.
std::string_view WithoutTrailingSeparator(std::string_view path);

/// Whether both texts name the same existing folder.
bool IsSameFolder(std::string_view left, std::string_view right);
/// Creates every missing folder along the path. Always true: opening a file there reports its own
/// error.
bool EnsureFolder(std::string_view path);
/// Names of the folder's files (no folders, no hidden files) in the system's order, or sorted by
/// name if it has none; empty if the folder cannot be listed.
std::vector<std::string> ListFiles(std::string_view folder);
/// Path of the first file in the folder; empty if there is none.
std::string FirstFileOfFolder(std::string_view folder);

enum class CompareMode { Exact, IgnoreCase };
/// Index of the first entry equal to the text, or -1.
int FindListEntry(const std::vector<std::string>& entries, std::string_view text, CompareMode mode);

} // namespace orrery::util
