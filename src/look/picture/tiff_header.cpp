#include "look/picture/byte_view.h"
#include "look/picture/headers.h"

namespace orrery::look {

namespace {

constexpr std::size_t kTiffEntry = 12;

double TiffNumber(const ByteView& view, std::size_t entry)
{
    switch (view.U16(entry + 2)) {
    case 3:
        return view.U16(entry + 8); // SHORT
    case 4:
        return view.U32(entry + 8); // LONG
    case 5: {                       // RATIONAL, elsewhere
        const std::size_t at = view.U32(entry + 8);
        const double divisor = view.Has(at, 8) ? view.U32(at + 4) : 0;
        return divisor > 0 ? view.U32(at) / divisor : 0;
    }
    default:
        return 0;
    }
}

} // namespace

std::optional<PictureInfo> ReadTiff(std::string_view bytes)
{
    const auto mark = bytes.substr(0, 4);
    const bool isBig = mark == std::string_view("MM\0*", 4);
    if (!isBig && mark != std::string_view("II*\0", 4))
        return std::nullopt;
    const ByteView view(bytes, isBig);
    const std::size_t directory = view.U32(4);
    PictureInfo info;
    info.type = PictureType::Tiff;
    double unit = 1;
    for (std::size_t i = 0; i < view.U16(directory); ++i) {
        const std::size_t entry = directory + 2 + i * kTiffEntry;
        if (!view.Has(entry, kTiffEntry))
            return std::nullopt;
        switch (view.U16(entry)) {
        case 256:
            info.width = TiffNumber(view, entry);
            break;
        case 257:
            info.height = TiffNumber(view, entry);
            break;
        case 282:
            info.resolutionX = TiffNumber(view, entry);
            break;
        case 283:
            info.resolutionY = TiffNumber(view, entry);
            break;
        case 296:
            unit = TiffNumber(view, entry) == 3 ? 2.54 : 1;
            break; // centimetres
        default:
            break;
        }
    }
    info.resolutionX *= unit;
    info.resolutionY *= unit;
    if (!(info.width >= 1 && info.height >= 1))
        return std::nullopt;
    return info;
}

} // namespace orrery::look
