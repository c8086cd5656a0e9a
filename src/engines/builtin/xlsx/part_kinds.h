#pragma once

#include <string_view>

namespace orrery::xlsx {

/// The kinds of parts that have names or ids which are unique in a workbook, or use them.
enum class PartKind {
    Other,
    Table,
    Slicers, ///< or timelines
    SlicerCache,
    ThreadedComments,
    Comments,
    Drawing,
    VmlDrawing,
    NamedViews,
    AddIn,
    Chart2016,
    PivotTable,
    QueryTable
};

/// The kind of the parts with a content type.
PartKind KindOf(std::string_view type);
/// Whether parts of the content type have such names or ids.
bool HasIdentity(std::string_view type);
/// Whether an element is a slicer or timeline, in its own part or in a drawing.
bool IsSlicer(std::string_view localName);

} // namespace orrery::xlsx
