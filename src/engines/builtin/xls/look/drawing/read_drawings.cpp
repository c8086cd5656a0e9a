#include "engines/builtin/xls/look/drawing/read_drawings.h"

#include "engines/builtin/xls/look/drawing/header_pictures.h"
#include "engines/builtin/xls/look/drawing/sheet_drawings.h"

#include <string>
#include <utility>

namespace orrery::xls {
namespace {

constexpr const char* kNoHeaderPicture =
    ": those of a header are damaged, too large, or of a kind that is not known";

} // namespace

DrawingReader::DrawingReader(const Globals& globals, const FormulaNames& names,
                             DrawingStyles styles)
    : globals_(globals), names_(names), styles_(std::move(styles)),
      pictures_(DrawingKind::Sheet, globals.DrawingGroupPlace().In(globals.Stream())),
      headerPictures_(DrawingKind::HeaderFooter, globals.HeaderPicturesPlace().In(globals.Stream()))
{
}

std::vector<book::Drawing> DrawingReader::Read(std::size_t begin,
                                               std::vector<book::LeftOut>& leftOut)
{
    const DrawingSource source{globals_.Stream(), names_, styles_};
    return SheetDrawings(source, pictures_, leftOut).Read(begin);
}

std::vector<book::HeaderPicture> DrawingReader::ReadHeaders(std::size_t begin,
                                                            std::vector<book::LeftOut>& leftOut)
{
    if (headerPictures_.IsEmpty())
        return {};
    std::size_t unreadable = 0;
    auto found = ReadHeaderPictures(globals_.Stream(), begin, headerPictures_, unreadable);
    if (unreadable > 0)
        leftOut.push_back({"picture", {}, std::to_string(unreadable) + kNoHeaderPicture});
    return found;
}

} // namespace orrery::xls
