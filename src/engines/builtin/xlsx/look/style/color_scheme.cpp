#include "engines/builtin/xlsx/look/style/color_scheme.h"

#include "engines/builtin/common/tint.h"
#include "engines/builtin/xlsx/look/style/attributes.h"

namespace orrery::xlsx {
namespace {

std::optional<book::Color> BaseColor(const xml::Scanner& scanner, const ColorScheme& scheme)
{
    if (const auto theme = IndexAttribute(scanner, "theme"))
        return scheme.theme.ByIndex(*theme);
    if (const auto rgb = scanner.Attribute("rgb"))
        return builtin::ParseHexColor(rgb->raw);
    if (const auto index = IndexAttribute(scanner, "indexed"))
        return builtin::PaletteColor(scheme.palette, *index);
    return std::nullopt;
}

} // namespace

std::optional<book::Color> ReadColor(const xml::Scanner& scanner, const ColorScheme& scheme)
{
    auto color = BaseColor(scanner, scheme);
    if (!color)
        return std::nullopt;
    return builtin::ApplyTint(*color, NumberAttribute(scanner, "tint").value_or(0));
}

} // namespace orrery::xlsx
