#include "ui/wx/look/text_drawing.h"

#include "look/canvas/text_limits.h"
#include "look/text/font_name.h"

#include <wx/font.h>
#include <wx/fontenum.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace orrery::ui::wx {
namespace {

/// Fonts are asked for in so many times their size and drawn so much smaller: what the system
/// rounds to whole pixels is little then.
constexpr double kMagnified = 16;

wxString ToString(std::string_view text)
{
    return wxString::FromUTF8(text.data(), text.size());
}

wxFontFamily FamilyOf(look::FontKind kind)
{
    switch (kind) {
    case look::FontKind::Sans:
        return wxFONTFAMILY_SWISS;
    case look::FontKind::Serif:
        return wxFONTFAMILY_ROMAN;
    case look::FontKind::Mono:
        return wxFONTFAMILY_TELETYPE;
    case look::FontKind::Script:
        return wxFONTFAMILY_SCRIPT;
    }
    return wxFONTFAMILY_SWISS;
}

/// The font itself if the system has it, or what stands in for it.
wxString FaceOf(const std::string& name)
{
    std::string_view own = name;
    if (own.starts_with('@'))
        own.remove_prefix(1);
    const wxString face = ToString(own);
    if (!face.empty() && wxFontEnumerator::IsValidFacename(face))
        return face;
    const wxString substitute = ToString(look::OpenFontName(look::MatchFont(own).font));
    return wxFontEnumerator::IsValidFacename(substitute) ? substitute : wxString();
}

class MagnifiedDrawing final : public TextDrawing {
public:
    explicit MagnifiedDrawing(wxGraphicsContext& context) : context_(context) {}
    void Draw(look::Point at, std::string_view text, const look::TextStyle& style,
              double width) override
    {
        const double size = std::min(style.font.size * look::kPixelsPerPoint, look::kLargestFont);
        text = text.substr(0, static_cast<std::size_t>(look::kLongestText / std::max(size, 1.0)));
        const wxString line = ToString(text);
        if (line.empty())
            return;
        context_.SetFont(FontOf(style.font, size, style.color));
        double drawn = 0;
        double height = 0;
        double descent = 0;
        double leading = 0;
        context_.GetTextExtent(line, &drawn, &height, &descent, &leading);
        const double actual = drawn / kMagnified;
        const bool isStretched = width > 0 && actual > 0 && text.size() > 1 &&
                                 std::abs(actual - width) > look::kWidthTolerance;
        context_.PushState();
        context_.Translate(at.x, at.y);
        context_.Scale((isStretched ? width / actual : 1) / kMagnified, 1 / kMagnified);
        context_.DrawText(line, 0, descent - height);
        context_.PopState();
    }

private:
    using Key = std::tuple<std::string, double, bool, bool, unsigned>;

    const wxGraphicsFont& FontOf(const book::Font& font, double size, const book::Color& color)
    {
        const unsigned rgb = color.red * 65536U + color.green * 256U + color.blue;
        const Key key(font.name, size, font.bold, font.italic, rgb);
        const auto known = fonts_.find(key);
        if (known != fonts_.end())
            return known->second;
        const wxFontInfo info = wxFontInfo(size * kMagnified / look::kPixelsPerPoint)
                                    .Family(FamilyOf(look::MatchFont(font.name).kind))
                                    .FaceName(FaceOf(font.name))
                                    .Bold(font.bold)
                                    .Italic(font.italic);
        wxFont made(info);
        // In pixels of the page, whatever the resolution of the screen is.
        const wxGraphicsFont drawn = context_.CreateFont(
            size * kMagnified, made.GetFaceName(),
            (font.bold ? wxFONTFLAG_BOLD : 0) | (font.italic ? wxFONTFLAG_ITALIC : 0),
            wxColour(color.red, color.green, color.blue));
        return fonts_.emplace(key, drawn).first->second;
    }

    wxGraphicsContext& context_;
    std::map<Key, wxGraphicsFont> fonts_;
};

} // namespace

std::unique_ptr<TextDrawing> MakeTextDrawing(wxGraphicsContext& context)
{
    return std::make_unique<MagnifiedDrawing>(context);
}

} // namespace orrery::ui::wx
