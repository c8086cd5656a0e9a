#pragma once

#include "book/look/drawing.h"
#include "book/look/sheet_look.h"
#include "engines/builtin/xls/look/chart/chart_reader.h"
#include "engines/builtin/xls/look/drawing/art_tree.h"
#include "engines/builtin/xls/look/drawing/pictures.h"
#include "engines/builtin/xls/look/drawing/shape_text.h"
#include "engines/builtin/xls/look/drawing/sheet_art.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orrery::xls {

/// Turns the art of one sheet into drawings.
class SheetDrawings {
public:
    /// All of them must outlive this object.
    SheetDrawings(const DrawingSource& source, Pictures& pictures,
                  std::vector<book::LeftOut>& leftOut)
        : source_(source), pictures_(pictures), leftOut_(leftOut)
    {
    }

    /// `begin` is where the sheet's BOF record is.
    std::vector<book::Drawing> Read(std::size_t begin);

private:
    std::optional<book::Drawing> Convert(const ArtShape& shape);
    std::vector<book::Drawing> ConvertAll(const std::vector<std::size_t>& shapes,
                                          const ArtShape* group);
    bool IsLeftOut(const ArtShape& shape, const SheetObject* object) const;
    void ReadContent(const ArtShape& shape, const SheetObject* object, book::Drawing& drawing);
    void ReadPicture(const ArtShape& shape, std::uint32_t number, book::Drawing& drawing);
    void ReadChartOf(const SheetObject& object, book::Drawing& drawing);
    void ReadOutline(const ArtShape& shape, book::Drawing& drawing);
    void ReadText(const ArtShape& shape, book::Drawing& drawing);
    const SheetObject* ObjectOf(const ArtShape& shape) const;
    void Count(std::string_view what, std::size_t count, std::string_view reason);
    void Report();

    const DrawingSource& source_;
    Pictures& pictures_;
    std::vector<book::LeftOut>& leftOut_;
    SheetArt art_;
    ArtTree tree_;
    TextBudget texts_;
    ChartBudget charts_;
    std::size_t tooLarge_ = 0;   // pictures
    std::size_t unreadable_ = 0; // pictures
    std::size_t badCharts_ = 0;
    std::size_t stepsLeft_ = 500'000; // of the outlines of freeforms
    std::size_t outlinesLeftOut_ = 0;
    std::size_t textsCut_ = 0;
};

} // namespace orrery::xls
