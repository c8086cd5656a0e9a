#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Texts in the registry, in UTF-8.
namespace orrery::automation {

/// The server's settings, under the current user.
inline constexpr const char* kServerKey = "Software\\Orrery\\ExcelServer";
inline constexpr const char* kLogValue = "Log";           ///< path of the log
inline constexpr const char* kFaultsValue = "Faults";     ///< one fault in each line
inline constexpr const char* kLanguageValue = "Language"; ///< "de"; else English

/// Creates a missing key. Throws std::system_error, like all functions that write.
void WriteText(HKEY root, const std::string& key, const std::string& value,
               const std::string& text);
void WriteLines(HKEY root, const std::string& key, const std::string& value,
                const std::vector<std::string>& lines);
/// Empty if there is none.
std::string ReadText(HKEY root, const std::string& key, const std::string& value);
std::vector<std::string> ReadLines(HKEY root, const std::string& key, const std::string& value);
/// Deletes the key with its content; a missing one is fine.
void DeleteKey(HKEY root, const std::string& key);

} // namespace orrery::automation
