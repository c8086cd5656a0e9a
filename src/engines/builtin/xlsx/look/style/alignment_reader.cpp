#include "engines/builtin/xlsx/look/style/alignment_reader.h"

#include "engines/builtin/xlsx/look/style/attributes.h"

namespace orrery::xlsx {
namespace {

using book::Alignment;
using book::HorizontalAlignment;
using book::VerticalAlignment;

constexpr Words<HorizontalAlignment, 8> kHorizontal = {{
    {"general", HorizontalAlignment::General},
    {"left", HorizontalAlignment::Left},
    {"center", HorizontalAlignment::Center},
    {"right", HorizontalAlignment::Right},
    {"fill", HorizontalAlignment::Fill},
    {"justify", HorizontalAlignment::Justify},
    {"centerContinuous", HorizontalAlignment::CenterContinuous},
    {"distributed", HorizontalAlignment::Distributed},
}};
constexpr Words<VerticalAlignment, 5> kVertical = {{
    {"top", VerticalAlignment::Top},
    {"center", VerticalAlignment::Center},
    {"bottom", VerticalAlignment::Bottom},
    {"justify", VerticalAlignment::Justify},
    {"distributed", VerticalAlignment::Distributed},
}};

/// Degrees up to 90 counterclockwise; from 91 on, clockwise ones are counted beyond 90.
std::int16_t RotationOf(std::int32_t written)
{
    if (written == Alignment::kStacked)
        return Alignment::kStacked;
    if (written > 180)
        return 0;
    return static_cast<std::int16_t>(written <= 90 ? written : 90 - written);
}

} // namespace

Alignment ReadAlignment(const xml::Scanner& scanner)
{
    Alignment alignment;
    alignment.horizontal =
        WordAttribute(scanner, "horizontal", kHorizontal).value_or(HorizontalAlignment::General);
    alignment.vertical =
        WordAttribute(scanner, "vertical", kVertical).value_or(VerticalAlignment::Bottom);
    alignment.wrap = FlagAttribute(scanner, "wrapText", false);
    alignment.shrink = FlagAttribute(scanner, "shrinkToFit", false);
    alignment.indent =
        static_cast<std::int16_t>(IntegerAttribute(scanner, "indent", 0, 250).value_or(0));
    alignment.rotation = RotationOf(IntegerAttribute(scanner, "textRotation", 0, 255).value_or(0));
    alignment.readingOrder = static_cast<book::ReadingOrder>(
        IntegerAttribute(scanner, "readingOrder", 0, 2).value_or(0));
    return alignment;
}

} // namespace orrery::xlsx
