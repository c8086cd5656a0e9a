#include "look/cairo/fonts_windows.h"

#include "util/wide.h"

#include <algorithm>
#include <array>

namespace orrery::look {
namespace {

LOGFONTW Description(const std::wstring& face, bool isBold, bool isItalic)
{
    LOGFONTW font = {};
    font.lfHeight = -kFontUnits;
    font.lfWeight = isBold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = isItalic ? TRUE : FALSE;
    font.lfCharSet = DEFAULT_CHARSET;
    font.lfOutPrecision = OUT_TT_ONLY_PRECIS; // others cannot be embedded
    face.copy(font.lfFaceName, LF_FACESIZE - 1);
    return font;
}

int CALLBACK TakeFont(const LOGFONTW* /*font*/, const TEXTMETRICW* /*metrics*/, DWORD type,
                      LPARAM found)
{
    if ((type & TRUETYPE_FONTTYPE) != 0)
        *reinterpret_cast<bool*>(found) = true;
    return 1;
}

bool IsInstalled(const std::wstring& face)
{
    if (face.empty() || face.size() >= LF_FACESIZE)
        return false;
    LOGFONTW wanted = {};
    wanted.lfCharSet = DEFAULT_CHARSET;
    face.copy(wanted.lfFaceName, LF_FACESIZE - 1);
    bool isFound = false;
    const HDC screen = ::GetDC(nullptr);
    ::EnumFontFamiliesExW(screen, &wanted, TakeFont, reinterpret_cast<LPARAM>(&isFound), 0);
    ::ReleaseDC(nullptr, screen);
    return isFound;
}

/// What every Windows has.
const wchar_t* CommonFace(FontKind kind)
{
    switch (kind) {
    case FontKind::Sans:
    case FontKind::Script:
        return L"Arial";
    case FontKind::Serif:
        return L"Times New Roman";
    case FontKind::Mono:
        return L"Courier New";
    }
    return L"Arial";
}

/// Fonts of Windows that have between them the characters of most languages; signs beyond the first
/// 65,536 characters are taken from the last one that is installed.
constexpr std::array<const wchar_t*, 14> kFurtherFaces = {
    L"Segoe UI", L"Segoe UI Symbol", L"Microsoft YaHei",    L"Yu Gothic",     L"MS Gothic",
    L"SimSun",   L"Malgun Gothic",   L"Microsoft JhengHei", L"Nirmala UI",    L"Leelawadee UI",
    L"Ebrima",   L"Tahoma",          L"DejaVu Sans",        L"Segoe UI Emoji"};

std::vector<std::wstring> FacesFor(const std::string& name)
{
    std::string_view own = name;
    if (own.starts_with('@')) // vertical writing
        own.remove_prefix(1);
    const FontMatch match = MatchFont(own);
    std::vector<std::wstring> faces;
    const auto add = [&faces](const std::wstring& face) {
        if (std::find(faces.begin(), faces.end(), face) == faces.end() && IsInstalled(face))
            faces.push_back(face);
    };
    add(util::ToWide(own));
    add(util::ToWide(OpenFontName(match.font)));
    add(CommonFace(match.kind));
    for (const wchar_t* const face : kFurtherFaces)
        add(face);
    if (faces.empty())
        faces.emplace_back(CommonFace(match.kind)); // the system finds another
    return faces;
}

} // namespace

WindowsFont::WindowsFont(const std::wstring& face, bool isBold, bool isItalic)
{
    LOGFONTW font = Description(face, isBold, isItalic);
    font_ = ::CreateFontIndirectW(&font);
    face_ = cairo_win32_font_face_create_for_logfontw(&font);
}

WindowsFont::~WindowsFont()
{
    ::ScriptFreeCache(&cache_);
    cairo_font_face_destroy(face_);
    ::DeleteObject(font_);
}

std::vector<WindowsFont*> WindowsFonts::FontsFor(const std::string& name, bool isBold,
                                                 bool isItalic)
{
    auto known = faces_.find(name);
    if (known == faces_.end())
        known = faces_.emplace(name, FacesFor(name)).first;
    std::vector<WindowsFont*> all;
    for (const std::wstring& face : known->second) {
        auto& font = fonts_[{face, isBold, isItalic}];
        if (!font)
            font = std::make_unique<WindowsFont>(face, isBold, isItalic);
        all.push_back(font.get());
    }
    return all;
}

} // namespace orrery::look
