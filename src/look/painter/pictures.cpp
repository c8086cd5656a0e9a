#include "look/painter/pictures.h"

#include "look/painter/pixels.h"
#include "look/painter/text_bodies.h"
#include "look/picture/picture.h"

#include <string>

namespace orrery::look {

namespace {

constexpr book::Color kFrame{0xA6, 0xA6, 0xA6};
constexpr book::Color kGround{0xF7, 0xF7, 0xF7};
constexpr book::Color kInk{0x59, 0x59, 0x59};
constexpr double kTextSize = 8; // points
constexpr double kTextInset = 2;
constexpr std::size_t kLongestText = 200;
/// A smaller frame has no room for a word.
constexpr double kLeastTextWidth = 40;
constexpr double kLeastTextHeight = 14;

} // namespace

bool PaintPicture(const book::Drawing& drawing, const Box& box, Canvas& canvas)
{
    if (!drawing.picture || ReasonNotShown(*drawing.picture))
        return false;
    // The bytes tell the type better than the name of a part.
    const auto info = ReadPictureInfo(*drawing.picture);
    PictureSource source;
    source.bytes = *drawing.picture;
    source.type = info ? std::string(PictureTypeName(info->type)) : drawing.pictureType;
    const auto& crop = drawing.crop;
    source.shown = {crop.left, crop.top, crop.right - crop.left, crop.bottom - crop.top};
    return canvas.DrawPicture(box, source);
}

void PaintPlaceholder(std::string_view text, const Box& box, const TextMeasure& measure,
                      Canvas& canvas)
{
    const Box outer = OnPixels(box);
    if (outer.width < 1 || outer.height < 1)
        return;
    canvas.DrawPath(FrameOfPixels(outer), SolidBrush(kGround), Pen{kFrame, 1, {}, 1});
    if (outer.width < kLeastTextWidth || outer.height < kLeastTextHeight)
        return;
    book::TextBody body;
    book::ParagraphRun run;
    run.text = text.size() > kLongestText ? std::string() : std::string(text);
    run.font.size = kTextSize;
    run.font.color = kInk;
    body.paragraphs.push_back({{run}, book::HorizontalAlignment::Center});
    body.vertical = book::VerticalAlignment::Center;
    body.left = body.top = body.right = body.bottom = kTextInset;
    PaintTextBody(body, outer, measure, canvas);
}

} // namespace orrery::look
