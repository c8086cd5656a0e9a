#include "engines/builtin/xlsx/part_kinds.h"

#include <array>
#include <utility>

namespace orrery::xlsx {
namespace {

/// Content types of all families end in the same word.
constexpr std::array<std::pair<std::string_view, PartKind>, 14> kLastWords = {{
    {".table+xml", PartKind::Table},
    {".slicer+xml", PartKind::Slicers},
    {".timeline+xml", PartKind::Slicers},
    {".slicerCache+xml", PartKind::SlicerCache},
    {".timelineCache+xml", PartKind::SlicerCache},
    {".threadedcomments+xml", PartKind::ThreadedComments},
    {".comments+xml", PartKind::Comments},
    {".drawing+xml", PartKind::Drawing},
    {".vmlDrawing", PartKind::VmlDrawing},
    {".namedsheetviews+xml", PartKind::NamedViews},
    {".webextension+xml", PartKind::AddIn},
    {".chartex+xml", PartKind::Chart2016},
    {".pivotTable+xml", PartKind::PivotTable},
    {".queryTable+xml", PartKind::QueryTable},
}};

} // namespace

PartKind KindOf(std::string_view type)
{
    for (const auto& [word, kind] : kLastWords) {
        if (type.ends_with(word))
            return kind;
    }
    return PartKind::Other;
}

bool HasIdentity(std::string_view type)
{
    return KindOf(type) != PartKind::Other;
}

bool IsSlicer(std::string_view localName)
{
    return localName == "slicer" || localName == "timeline" || localName == "timeslicer";
}

} // namespace orrery::xlsx
