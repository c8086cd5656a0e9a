#pragma once

#include "book/look/drawing.h"
#include "book/look/sheet_look.h"
#include "engines/builtin/xls/formula_text/formula_names.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"
#include "engines/builtin/xls/look/drawing/pictures.h"
#include "engines/builtin/xls/records/globals.h"

#include <cstddef>
#include <vector>

namespace orrery::xls {

/// Reads what lies above the cells of the sheets of a workbook. Pictures that several sheets show
/// are kept once.
class DrawingReader {
public:
    /// Both must outlive this object.
    DrawingReader(const Globals& globals, const FormulaNames& names, DrawingStyles styles);

    /// The drawings of the sheet whose BOF record is at `begin` of the workbook stream, in the
    /// order of painting: pictures, shapes, charts, controls; none of a chart sheet. Hidden
    /// drawings, notes and the arrows of filters are not listed. Never throws for what the records
    /// contain: what cannot be read is added to `leftOut`, once for each reason.
    std::vector<book::Drawing> Read(std::size_t begin, std::vector<book::LeftOut>& leftOut);

    /// The pictures of the sheet's headers and footers, the same way.
    std::vector<book::HeaderPicture> ReadHeaders(std::size_t begin,
                                                 std::vector<book::LeftOut>& leftOut);

private:
    const Globals& globals_;
    const FormulaNames& names_;
    DrawingStyles styles_;
    Pictures pictures_;
    Pictures headerPictures_;
};

} // namespace orrery::xls
