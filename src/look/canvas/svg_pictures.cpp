#include "look/canvas/svg_canvas.h"
#include "look/canvas/svg_text.h"

namespace orrery::look {

namespace {

/// The media type of pictures that every program for SVG shows; else nothing.
std::string_view MediaType(std::string_view type)
{
    for (const std::string_view known : {"png", "jpeg", "gif", "bmp"}) {
        if (type == known)
            return known;
    }
    return type == "svg" ? "svg+xml" : std::string_view();
}

} // namespace

bool SvgCanvas::DrawPicture(const Box& box, const PictureSource& picture)
{
    const auto mediaType = MediaType(picture.type);
    const Box& shown = picture.shown;
    if (mediaType.empty() || picture.bytes.empty() || !(shown.width > 0 && shown.height > 0))
        return false;
    if (!(box.width > 0 && box.height > 0))
        return true; // too small to be seen
    std::string symbol = " viewBox=\"0 0 100 100\" preserveAspectRatio=\"none\">"
                         "<image width=\"100\" height=\"100\" preserveAspectRatio=\"none\" "
                         "xlink:href=\"data:image/";
    symbol += mediaType;
    symbol += ";base64,";
    AppendBase64(symbol, picture.bytes);
    symbol += "\"/></symbol>";
    const std::string id = definitions_.Use("symbol", "picture-", std::move(symbol));

    const Box whole{box.x - shown.x * box.width / shown.width,
                    box.y - shown.y * box.height / shown.height, box.width / shown.width,
                    box.height / shown.height};
    const bool isCut = whole != box;
    if (isCut)
        Clip(box);
    AppendElement("<use xlink:href=\"#" + id + "\" x=\"" + SvgNumber(whole.x) + "\" y=\"" +
                  SvgNumber(whole.y) + "\" width=\"" + SvgNumber(whole.width) + "\" height=\"" +
                  SvgNumber(whole.height) + "\"/>\n");
    frames_.back().hasClip = true; // its place would move a clip of its own
    if (isCut)
        Restore();
    return true;
}

} // namespace orrery::look
