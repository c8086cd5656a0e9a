#include "look/painter/border_lines.h"

namespace orrery::look {

double LineWidth(book::LineStyle style)
{
    using book::LineStyle;
    switch (style) {
    case LineStyle::None:
        return 0;
    case LineStyle::Thin:
    case LineStyle::Dashed:
    case LineStyle::Dotted:
    case LineStyle::Hair:
    case LineStyle::DashDot:
    case LineStyle::DashDotDot:
        return 1;
    case LineStyle::Medium:
    case LineStyle::MediumDashed:
    case LineStyle::MediumDashDot:
    case LineStyle::MediumDashDotDot:
    case LineStyle::SlantDashDot:
        return 2;
    case LineStyle::Thick:
    case LineStyle::Double:
        return 3;
    }
    return 0;
}

std::vector<Stroke> StrokesOf(book::LineStyle style)
{
    using book::LineStyle;
    const double width = LineWidth(style);
    switch (style) {
    case LineStyle::None:
        return {};
    case LineStyle::Thin:
    case LineStyle::Medium:
    case LineStyle::Thick:
        return {{0, 0, width, {}}};
    case LineStyle::Hair:
        return {{0, 0, width, {1, 1}}};
    case LineStyle::Dotted:
        return {{0, 0, width, {2, 2}}};
    case LineStyle::Dashed:
        return {{0, 0, width, {3, 1}}};
    case LineStyle::MediumDashed:
        return {{0, 0, width, {9, 3}}};
    case LineStyle::DashDot:
    case LineStyle::MediumDashDot:
        return {{0, 0, width, {9, 3, 3, 3}}};
    case LineStyle::DashDotDot:
    case LineStyle::MediumDashDotDot:
        return {{0, 0, width, {9, 3, 3, 3, 3, 3}}};
    case LineStyle::SlantDashDot: // the lower half begins a pixel earlier
        return {{-0.5, 1, 1, {11, 1, 5, 1}}, {0.5, 0, 1, {11, 1, 5, 1}}};
    case LineStyle::Double:
        return {{-1, 0, 1, {}}, {1, 0, 1, {}}};
    }
    return {};
}

int LineRank(book::LineStyle style)
{
    using book::LineStyle;
    switch (style) {
    case LineStyle::None:
        return 0;
    case LineStyle::Hair:
        return 1;
    case LineStyle::Dotted:
        return 2;
    case LineStyle::DashDotDot:
        return 3;
    case LineStyle::DashDot:
        return 4;
    case LineStyle::Dashed:
        return 5;
    case LineStyle::Thin:
        return 6;
    case LineStyle::MediumDashDotDot:
        return 7;
    case LineStyle::SlantDashDot:
        return 8;
    case LineStyle::MediumDashDot:
        return 9;
    case LineStyle::MediumDashed:
        return 10;
    case LineStyle::Medium:
        return 11;
    case LineStyle::Double:
        return 12;
    case LineStyle::Thick:
        return 13;
    }
    return 0;
}

} // namespace orrery::look
