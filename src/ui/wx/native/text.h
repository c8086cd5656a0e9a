#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace orrery::ui::wx {

/// Converts the program's UTF-8 for the toolkit.
inline wxString ToWx(std::string_view text)
{
    return wxString::FromUTF8(text.data(), text.size());
}

/// The same for a text of several lines: CR LF becomes LF.
inline wxString LinesToWx(std::string_view text)
{
    wxString lines = ToWx(text);
    lines.Replace("\r\n", "\n");
    return lines;
}

inline std::string FromWx(const wxString& text)
{
    return std::string(text.utf8_str());
}

} // namespace orrery::ui::wx
