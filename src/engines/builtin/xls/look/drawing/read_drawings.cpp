#include "engines/builtin/xls/look/drawing/read_drawings.h"

#include "engines/builtin/xls/look/drawing/sheet_drawings.h"

#include <utility>

namespace orrery::xls {

DrawingReader::DrawingReader(const Globals& globals, const FormulaNames& names,
                             DrawingStyles styles)
    : globals_(globals), names_(names), styles_(std::move(styles)),
      pictures_(globals.DrawingGroupPlace().In(globals.Stream()))
{
}

std::vector<book::Drawing> DrawingReader::Read(std::size_t begin,
                                               std::vector<book::LeftOut>& leftOut)
{
    const DrawingSource source{globals_.Stream(), names_, styles_};
    return SheetDrawings(source, pictures_, leftOut).Read(begin);
}

} // namespace orrery::xls
