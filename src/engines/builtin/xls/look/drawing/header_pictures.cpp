#include "engines/builtin/xls/look/drawing/header_pictures.h"

#include "engines/builtin/xls/drawing/art_records.h"
#include "engines/builtin/xls/look/drawing/art_tree.h"
#include "engines/builtin/xls/look/drawing/shape_look.h"
#include "engines/builtin/xls/look/drawing/sheet_art.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/records.h"

#include <optional>
#include <utility>

namespace orrery::xls {
namespace {

constexpr double kPointsPerPixel = 0.75;

/// Nothing for a shape that is no picture of a header.
std::optional<book::HeaderPicture> Convert(const ArtShape& shape, Pictures& pictures,
                                           std::size_t& unreadable)
{
    const auto slot = book::ParseHeaderSlot(shape.properties.Text(ShapeProperty::Name));
    const std::uint32_t number = shape.properties.Value(ShapeProperty::Picture, 0);
    if (!slot || !shape.size || shape.size->width <= 0 || shape.size->height <= 0 || number == 0)
        return std::nullopt;
    const Pictures::Picture& found = pictures.Find(number);
    if (found.bytes == nullptr) {
        ++unreadable;
        return std::nullopt;
    }
    book::HeaderPicture picture;
    picture.slot = *slot;
    picture.width = shape.size->width * kPointsPerPixel;
    picture.height = shape.size->height * kPointsPerPixel;
    picture.drawing.kind = book::DrawingKind::Picture;
    picture.drawing.name = shape.properties.Text(ShapeProperty::Name);
    picture.drawing.outline.isVisible = false;
    picture.drawing.picture = found.bytes;
    picture.drawing.pictureType = found.type;
    picture.drawing.crop = CropOf(shape.properties);
    return picture;
}

/// The records that contain the art of headers and footers.
ArtRecords HeaderArt(std::string_view stream, std::size_t begin)
{
    ArtRecords art;
    const Substream sheet = ReadSubstream(stream, begin, stream.size());
    RecordReader reader(stream.substr(0, sheet.end), begin);
    while (reader.IsWhole()) {
        const auto record = reader.Next();
        if (!record)
            break;
        if (record->type == RecordType::HeaderFooterPicture)
            art.Add(*record);
    }
    return art;
}

} // namespace

std::vector<book::HeaderPicture> ReadHeaderPictures(std::string_view stream, std::size_t begin,
                                                    Pictures& pictures, std::size_t& unreadable)
{
    std::vector<book::HeaderPicture> found;
    const ArtRecords records = HeaderArt(stream, begin);
    for (const ArtStream& art : records.HeaderPictures()) {
        const std::string bytes = ArtBytes(art, 0, art.Size());
        for (const ArtShape& shape : ReadArtTree(bytes).shapes) {
            if (found.size() == book::HeaderPicture::kMost)
                return found;
            if (auto picture = Convert(shape, pictures, unreadable))
                found.push_back(std::move(*picture));
        }
    }
    return found;
}

} // namespace orrery::xls
