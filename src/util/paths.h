#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::util {

// Path texts are UTF-8. They are separated by "\"; on systems that separate with "/", both count
// and "/" is what is written.

/// The system's own separator, "\" or "/".
extern const char kSeparator;

std::filesystem::path ToPath(std::string_view text);
std::string FromPath(const std::filesystem::path& path);

/// The file name after the last separator, without everything from its last "." on.
std::string BaseName(std::string_view path);
/// The file name after the last separator, whole.
std::string FileName(std::string_view path);
/// The text before the last separator; empty when there is none.
std::string ParentFolder(std::string_view path);
/// At least two characters long, of which the first two are slashes of either kind.
bool IsNetworkPath(std::string_view path);
/// `path` made absolute against `base`; an absolute path comes back unchanged.
std::string ResolvePath(std::string_view base, std::string_view path);
/// The path from the root on, with "." and ".." applied; a relative one counts from the current
/// folder. Throws Error(FileNotFound) where that is gone.
std::string AbsolutePath(std::string_view path);
/// With a separator at the end, added where there was none; an empty text stays empty.
std::string WithTrailingSeparator(std::string_view folder);

/// Whether two texts name the same folder, which is there.
bool IsSameFolder(std::string_view left, std::string_view right);
/// Makes every missing folder along the path. Always true: a later open reports its own error.
bool EnsureFolder(std::string_view path);
/// Whether the file can be opened for reading; false for a folder.
bool FileExists(std::string_view path);
/// Names of the folder's files (no folders, no hidden files) in the system's own order, or sorted
/// by name where it has none; empty when it cannot be listed.
std::vector<std::string> ListFiles(std::string_view folder);
/// The folder followed by the first of its files; empty when there is none.
std::string FirstFileOfFolder(std::string_view folder);

/// How `FindListEntry` compares.
enum class CompareMode { Exact, IgnoreCase };
/// Index of the first entry equal to the text, or -1.
int FindListEntry(const std::vector<std::string>& entries, std::string_view text, CompareMode mode);

} // namespace orrery::util
