#include "look/shape/shape_table.h"

#include <array>
#include <vector>

/// Lines and connectors, from the upper left corner to the lower right one.
namespace orrery::look {

namespace {

constexpr double kFarBend = 100;

double BendAt(const ShapeDraft& draft, std::size_t index)
{
    return draft.Share(index, 0.5, -kFarBend, kFarBend);
}

void StraightLine(ShapeDraft& draft)
{
    draft.Part(false, true).Move(0, 0).Line(draft.width, draft.height);
}

/// The corners of a connector with so many pieces: across first, and so in turn.
std::vector<Point> ConnectorPoints(const ShapeDraft& draft, int pieces)
{
    const double w = draft.width;
    const double h = draft.height;
    std::vector<Point> points{{0, 0}};
    for (int i = 0; i + 2 < pieces; ++i) {
        const double bend = BendAt(draft, static_cast<std::size_t>(i));
        const Point last = points.back();
        points.push_back(i % 2 == 0 ? Point{w * bend, last.y} : Point{last.x, h * bend});
    }
    const Point last = points.back();
    points.push_back(pieces % 2 == 0 ? Point{w, last.y} : Point{last.x, h});
    points.push_back({w, h});
    return points;
}

template <int kPieces> void BentConnector(ShapeDraft& draft)
{
    draft.Part(false, true);
    bool isFirst = true;
    for (const auto& point : ConnectorPoints(draft, kPieces)) {
        if (isFirst)
            draft.Move(point.x, point.y);
        else
            draft.Line(point.x, point.y);
        isFirst = false;
    }
}

/// Goes through the middles of the inner pieces, and leaves the corners aside.
template <int kPieces> void CurvedConnector(ShapeDraft& draft)
{
    const auto points = ConnectorPoints(draft, kPieces);
    draft.Part(false, true).Move(0, 0);
    Point from = points.front();
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const Point& corner = points[i];
        const Point& next = points[i + 1];
        const bool isLast = i + 2 == points.size();
        const Point to = isLast ? next : Point{(corner.x + next.x) / 2, (corner.y + next.y) / 2};
        draft.Curve({(from.x + corner.x) / 2, (from.y + corner.y) / 2},
                    {(corner.x + to.x) / 2, (corner.y + to.y) / 2}, to);
        from = to;
    }
}

constexpr std::array kLineShapes{ShapeRule{"line", StraightLine},
                                 ShapeRule{"lineInv", StraightLine, ShapeTurn::MirrorY},
                                 ShapeRule{"straightConnector1", StraightLine},
                                 ShapeRule{"bentConnector2", BentConnector<2>},
                                 ShapeRule{"bentConnector3", BentConnector<3>},
                                 ShapeRule{"bentConnector4", BentConnector<4>},
                                 ShapeRule{"bentConnector5", BentConnector<5>},
                                 ShapeRule{"curvedConnector2", CurvedConnector<2>},
                                 ShapeRule{"curvedConnector3", CurvedConnector<3>},
                                 ShapeRule{"curvedConnector4", CurvedConnector<4>},
                                 ShapeRule{"curvedConnector5", CurvedConnector<5>}};

} // namespace

std::span<const ShapeRule> LineShapes()
{
    return kLineShapes;
}

} // namespace orrery::look
