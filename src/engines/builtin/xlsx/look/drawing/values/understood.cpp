#include "engines/builtin/xlsx/look/drawing/values/understood.h"

namespace orrery::xlsx::drawing {

bool UnderstandsDrawing(std::string_view uri)
{
    constexpr std::string_view kFamily = "http://schemas.microsoft.com/office/drawing/";
    return uri.starts_with(kFamily) && (uri.ends_with("/chartex") || uri.ends_with("/slicer") ||
                                        uri.ends_with("/timeslicer") || uri.ends_with("/chart"));
}

} // namespace orrery::xlsx::drawing
