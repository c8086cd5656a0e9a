#include "ui/wx/look/text_drawing.h"

#include "look/cairo/text_drawing.h"

namespace orrery::ui::wx {
namespace {

/// The toolkit draws with Cairo here.
class CairoDrawing final : public TextDrawing {
public:
    explicit CairoDrawing(wxGraphicsContext& context)
        : texts_(look::MakeTextDrawing(static_cast<cairo_t*>(context.GetNativeContext()),
                                       look::TextsAs::Outlines))
    {
    }
    void Draw(look::Point at, std::string_view text, const look::TextStyle& style,
              double width) override
    {
        texts_->Draw(at, text, style, width);
    }

private:
    std::unique_ptr<look::TextDrawing> texts_;
};

} // namespace

std::unique_ptr<TextDrawing> MakeTextDrawing(wxGraphicsContext& context)
{
    return std::make_unique<CairoDrawing>(context);
}

} // namespace orrery::ui::wx
