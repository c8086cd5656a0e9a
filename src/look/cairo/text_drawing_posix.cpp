#include "look/cairo/text_drawing.h"

#include "look/canvas/text_limits.h"
#include "look/text/font_name.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>

namespace orrery::look {
namespace {

struct Deleter {
    void operator()(PangoContext* context) const { g_object_unref(context); }
    void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
    void operator()(PangoAttrList* list) const { pango_attr_list_unref(list); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
    void operator()(char* text) const { g_free(text); }
};
template <typename T> using Owned = std::unique_ptr<T, Deleter>;

/// The families to try, without the quotation marks of CSS.
std::string Families(const std::string& name)
{
    std::string families = FontFamilies(name);
    families.erase(std::remove(families.begin(), families.end(), '\''), families.end());
    return families;
}

/// A line of well-formed text without control characters.
std::string Line(std::string_view text, double fontSize)
{
    const auto longest = static_cast<std::size_t>(kLongestText / std::max(fontSize, 1.0));
    text = text.substr(0, longest);
    const Owned<char> valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    std::string line(valid.get());
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    return line;
}

/// Pictographs are outside of the first plane, and have no outlines.
bool MayHaveColors(std::string_view text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0xF0; });
}

class PangoDrawing final : public TextDrawing {
public:
    PangoDrawing(cairo_t* cairo, TextsAs textsAs)
        : cairo_(cairo), textsAs_(textsAs), context_(pango_cairo_create_context(cairo))
    {
        // Hinting moves characters to whole pixels, which changes the widths of texts.
        const Owned<cairo_font_options_t> options(cairo_font_options_create());
        cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_NONE);
        cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
        cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
        pango_cairo_context_set_font_options(context_.get(), options.get());
        pango_context_set_round_glyph_positions(context_.get(), FALSE);
        pango_cairo_context_set_resolution(context_.get(), kPixelsPerInch);
        layout_.reset(pango_layout_new(context_.get()));
        pango_layout_set_auto_dir(layout_.get(), FALSE);
        pango_layout_set_single_paragraph_mode(layout_.get(), TRUE);
        // As spreadsheet programs set texts: by the advance of each character alone.
        const Owned<PangoAttrList> attributes(pango_attr_list_new());
        pango_attr_list_insert(attributes.get(),
                               pango_attr_font_features_new("kern=0, liga=0, clig=0"));
        pango_layout_set_attributes(layout_.get(), attributes.get());
    }
    void Draw(Point at, std::string_view text, const TextStyle& style, double width) override
    {
        SetText(text, style);
        int units = 0;
        pango_layout_get_size(layout_.get(), &units, nullptr);
        const double drawn = static_cast<double>(units) / PANGO_SCALE;
        const bool isStretched =
            width > 0 && drawn > 0 && text.size() > 1 && std::abs(drawn - width) > kWidthTolerance;
        cairo_save(cairo_);
        cairo_translate(cairo_, at.x, at.y);
        if (isStretched)
            cairo_scale(cairo_, width / drawn, 1);
        const auto& color = style.color;
        cairo_set_source_rgb(cairo_, color.red / 255.0, color.green / 255.0, color.blue / 255.0);
        cairo_new_path(cairo_);
        cairo_move_to(cairo_, 0, 0);
        pango_cairo_update_layout(cairo_, layout_.get());
        PangoLayoutLine* const line = pango_layout_get_line_readonly(layout_.get(), 0);
        if (textsAs_ == TextsAs::Characters || MayHaveColors(text)) {
            pango_cairo_show_layout_line(cairo_, line);
        }
        else {
            pango_cairo_layout_line_path(cairo_, line);
            cairo_set_fill_rule(cairo_, CAIRO_FILL_RULE_WINDING);
            cairo_fill(cairo_);
        }
        cairo_new_path(cairo_);
        cairo_restore(cairo_);
    }

private:
    void SetText(std::string_view text, const TextStyle& style)
    {
        const double size = std::min(style.font.size * kPixelsPerPoint, kLargestFont);
        const Owned<PangoFontDescription> font(pango_font_description_new());
        pango_font_description_set_family(font.get(), Families(style.font.name).c_str());
        pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
        pango_font_description_set_weight(font.get(), style.font.bold ? PANGO_WEIGHT_BOLD
                                                                      : PANGO_WEIGHT_NORMAL);
        pango_font_description_set_style(font.get(), style.font.italic ? PANGO_STYLE_ITALIC
                                                                       : PANGO_STYLE_NORMAL);
        pango_context_set_base_dir(context_.get(),
                                   style.isRightToLeft ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
        pango_layout_set_font_description(layout_.get(), font.get());
        const std::string line = Line(text, size);
        pango_layout_set_text(layout_.get(), line.data(), static_cast<int>(line.size()));
        pango_layout_context_changed(layout_.get());
    }

    cairo_t* cairo_;
    TextsAs textsAs_;
    Owned<PangoContext> context_;
    Owned<PangoLayout> layout_;
};

} // namespace

std::unique_ptr<TextDrawing> MakeTextDrawing(cairo_t* cairo, TextsAs textsAs)
{
    return std::make_unique<PangoDrawing>(cairo, textsAs);
}

} // namespace orrery::look
