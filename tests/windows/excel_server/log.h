#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace orrery::excel_server {

/// Writes a line for each event. The line is in the file when `Write` returns, so the log shows how
/// far the server came before it died.
class Log {
public:
    /// An empty path writes nothing.
    explicit Log(const std::filesystem::path& path);
    void Write(const std::string& line);

private:
    std::ofstream file_;
};

/// The text in quotation marks; control characters, quotation marks and backslashes are escaped.
std::string Quoted(const std::string& text);
/// "0x800A03EC"
std::string Hex(long code);

} // namespace orrery::excel_server
