#include "engines/builtin/xlsx/look/drawing/header_pictures.h"

#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>

namespace orrery::xlsx::drawing {
namespace {

/// A length of a style in points, "width:15pt"; 0 if it is not there.
double StyleLength(const std::string& style, std::string_view name)
{
    constexpr double kEmuPerPoint = 12'700;
    for (const std::string& item : util::Split(style, ';')) {
        const std::size_t colon = std::min(item.find(':'), item.size());
        if (util::Trim(std::string_view(item).substr(0, colon)) == name && colon < item.size())
            return static_cast<double>(
                       EmuOfText(util::Trim(std::string_view(item).substr(colon + 1)), 0)) /
                   kEmuPerPoint;
    }
    return 0;
}

/// A share of the picture: "6554f" in 1/65536, or "0.1". ECMA-376-4 19.1.2.11
double CropShare(const xml::Element& image, std::string_view attribute)
{
    constexpr double kParts = 65'536;
    std::string text = image.Attribute(attribute);
    const bool isFixed = text.ends_with('f');
    if (isFixed)
        text.pop_back();
    if (text.starts_with('.'))
        text.insert(text.begin(), '0');
    const double value = util::ReadNumber(text).value_or(0);
    return std::clamp(isFixed ? value / kParts : value, -1.0, 0.99);
}

} // namespace

bool IsHeaderPicture(const xml::Element& shape)
{
    return !shape.Child("ClientData") && shape.Child("imagedata");
}

std::optional<book::HeaderPicture> ReadHeaderPicture(const xml::Element& shape,
                                                     const std::string& part, Pictures& pictures)
{
    book::HeaderPicture picture;
    const auto slot = book::ParseHeaderSlot(shape.Attribute("id"));
    const std::string style = shape.Attribute("style");
    picture.width = StyleLength(style, "width");
    picture.height = StyleLength(style, "height");
    if (!slot || !(picture.width > 0) || !(picture.height > 0))
        return std::nullopt;
    picture.slot = *slot;
    const xml::Element image = shape.Child("imagedata");
    if (!pictures.Load(part, image.Prefixed("relid"), picture.drawing))
        return std::nullopt;
    picture.drawing.kind = book::DrawingKind::Picture;
    picture.drawing.name = shape.Attribute("id");
    picture.drawing.outline.isVisible = false;
    picture.drawing.crop = {CropShare(image, "cropleft"), CropShare(image, "croptop"),
                            1 - CropShare(image, "cropright"), 1 - CropShare(image, "cropbottom")};
    return picture;
}

} // namespace orrery::xlsx::drawing
