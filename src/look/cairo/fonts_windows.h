#pragma once

#include "look/text/font_name.h"

#include <windows.h>
// After windows.h, which it needs.
#include <cairo-win32.h>
#include <usp10.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

namespace orrery::look {

/// A font of Windows, for Uniscribe and for Cairo.
class WindowsFont {
public:
    WindowsFont(const std::wstring& face, bool isBold, bool isItalic);
    ~WindowsFont();
    WindowsFont(const WindowsFont&) = delete;
    WindowsFont& operator=(const WindowsFont&) = delete;

    HFONT Handle() const { return font_; }
    cairo_font_face_t* Face() const { return face_; }
    SCRIPT_CACHE* Cache() { return &cache_; }

private:
    HFONT font_ = nullptr;
    cairo_font_face_t* face_ = nullptr;
    SCRIPT_CACHE cache_ = nullptr;
};

/// The size of the fonts above in pixels: large, since widths are whole numbers.
inline constexpr int kFontUnits = 2048;

/// The fonts that are used, and those that stand in for them.
class WindowsFonts {
public:
    /// The font of a name, or what comes nearest to it on this system; then those that have the
    /// characters which it has not.
    std::vector<WindowsFont*> FontsFor(const std::string& name, bool isBold, bool isItalic);

private:
    std::map<std::tuple<std::wstring, bool, bool>, std::unique_ptr<WindowsFont>> fonts_;
    std::map<std::string, std::vector<std::wstring>> faces_; ///< by the name that was asked for
};

} // namespace orrery::look
