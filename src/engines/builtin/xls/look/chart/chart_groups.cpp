#include "engines/builtin/xls/look/chart/chart_groups.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <cstdint>

namespace orrery::xls {
namespace {

book::Grouping GroupingOf(bool isStacked, bool isPercent)
{
    if (isPercent)
        return book::Grouping::PercentStacked;
    return isStacked ? book::Grouping::Stacked : book::Grouping::Clustered;
}

/// [MS-XLS] 2.4.15
void ReadBar(std::string_view data, book::ChartGroup& group)
{
    const unsigned flags = ReadU16(data, 4);
    group.kind = (flags & 1U) != 0 ? book::ChartKind::Bar : book::ChartKind::Column;
    group.grouping = GroupingOf((flags & 2U) != 0, (flags & 4U) != 0);
    group.overlap = -static_cast<std::int16_t>(ReadU16(data, 0)); // negative where bars overlap
    group.gapWidth = ReadU16(data, 2);
}

/// Lines and areas. [MS-XLS] 2.4.155, 2.4.3
void ReadStacked(std::string_view data, book::ChartKind kind, book::ChartGroup& group)
{
    const unsigned flags = ReadU16(data, 0);
    group.kind = kind;
    group.grouping = GroupingOf((flags & 1U) != 0, (flags & 2U) != 0);
}

/// [MS-XLS] 2.4.189
void ReadPie(std::string_view data, book::ChartGroup& group)
{
    const std::uint16_t hole = ReadU16(data, 2);
    group.kind = hole > 0 ? book::ChartKind::Doughnut : book::ChartKind::Pie;
    group.holeSize = hole;
    group.firstAngle = ReadU16(data, 0);
}

} // namespace

void ReadGroupRecord(ChartRecord type, std::string_view data, GroupPart& part)
{
    book::ChartGroup& group = part.group;
    using enum book::ChartKind;
    switch (type) {
    case ChartRecord::Bar:
        return ReadBar(data, group);
    case ChartRecord::Line:
        return ReadStacked(data, Line, group);
    case ChartRecord::Area:
        return ReadStacked(data, Area, group);
    case ChartRecord::Pie:
        return ReadPie(data, group);
    case ChartRecord::PieOfPie:
        group.kind = Pie;
        return;
    case ChartRecord::Scatter:
        group.kind = (ReadU16(data, 4) & 1U) != 0 ? Bubble : Scatter;
        return;
    case ChartRecord::Radar:
    case ChartRecord::RadarArea:
        group.kind = Radar;
        return;
    case ChartRecord::Surface:
        group.kind = Surface;
        return;
    case ChartRecord::Chart3D:
        part.is3D = true;
        return;
    case ChartRecord::ConnectingLine: // from the highest to the lowest value
        part.isStock |= ReadU16(data, 0) == 1;
        return;
    case ChartRecord::DropBar:
        part.isStock = true;
        return;
    default:
        return;
    }
}

} // namespace orrery::xls
