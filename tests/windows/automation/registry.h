#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Texts in the registry, as UTF-8.
namespace orrery::automation {

/// Where the server finds its settings: under the current user.
inline constexpr const char* kServerKey = "Software\\Orrery\\ExcelServer";
inline constexpr const char* kLogValue = "Log";       ///< path of the log
inline constexpr const char* kFaultsValue = "Faults"; ///< one fault a line

/// Makes the key where it is missing. Throws std::system_error, as all that write.
void WriteText(HKEY root, const std::string& key, const std::string& value,
               const std::string& text);
void WriteLines(HKEY root, const std::string& key, const std::string& value,
                const std::vector<std::string>& lines);
/// Empty where there is none.
std::string ReadText(HKEY root, const std::string& key, const std::string& value);
std::vector<std::string> ReadLines(HKEY root, const std::string& key, const std::string& value);
/// With all that it holds; one that is missing is fine.
void DeleteKey(HKEY root, const std::string& key);

} // namespace orrery::automation
