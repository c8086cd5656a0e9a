#include "excel_server/log.h"

#include <cstdio>

namespace orrery::excel_server {

Log::Log(const std::filesystem::path& path)
{
    if (!path.empty())
        file_.open(path, std::ios::binary | std::ios::app);
}

void Log::Write(const std::string& line)
{
    file_ << line << '\n' << std::flush;
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += {'\\', c};
        }
        else if (static_cast<unsigned char>(c) < ' ') {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned>(c));
            quoted += code;
        }
        else {
            quoted += c;
        }
    }
    return quoted + '"';
}

std::string Hex(long code)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(code));
    return text;
}

} // namespace orrery::excel_server
