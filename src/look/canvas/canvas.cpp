#include "look/canvas/canvas.h"

namespace orrery::look {

Brush SolidBrush(book::Color color, double opacity)
{
    return {{book::FillPattern::Solid, color, {}, {}}, opacity};
}

Path PathOfBox(const Box& box)
{
    using enum PathStep::Kind;
    return {{Move, {box.x, box.y}, {}, {}},
            {Line, {box.Right(), box.y}, {}, {}},
            {Line, {box.Right(), box.Bottom()}, {}, {}},
            {Line, {box.x, box.Bottom()}, {}, {}},
            {Close, {}, {}, {}}};
}

} // namespace orrery::look
