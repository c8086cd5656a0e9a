#include "engines/builtin/xlsx/look/style/differential_style.h"

#include "engines/builtin/common/number_format_codes.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xlsx/look/style/border_reader.h"
#include "engines/builtin/xlsx/look/style/fill_reader.h"
#include "engines/builtin/xlsx/look/style/font_reader.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

void ReadPartialFont(xml::Scanner& scanner, const ColorScheme& scheme, book::PartialStyle& style)
{
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        if (name == "b")
            style.bold = ReadToggle(scanner);
        else if (name == "i")
            style.italic = ReadToggle(scanner);
        else if (name == "strike")
            style.strike = ReadToggle(scanner);
        else if (name == "u")
            style.underline = ReadUnderline(scanner);
        else if (name == "color")
            style.fontColor = ReadColor(scanner, scheme);
        scanner.SkipElement();
    });
}

void ReadPartialNumberFormat(const xml::Scanner& scanner, book::PartialStyle& style)
{
    auto code = scanner.AttributeText("formatCode");
    if (code && !code->empty()) {
        if (code->size() <= kMaxFormatCode)
            style.numberFormat = std::move(*code);
        return;
    }
    const auto id = IndexAttribute(scanner, "numFmtId");
    if (const auto known = id ? builtin::BuiltInNumberFormat(*id) : std::nullopt)
        style.numberFormat = std::string(*known);
}

} // namespace

book::PartialStyle ReadDifferentialStyle(xml::Scanner& scanner, const ColorScheme& scheme)
{
    book::PartialStyle style;
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        if (name == "font")
            return ReadPartialFont(scanner, scheme, style);
        if (name == "border")
            return ReadPartialBorder(scanner, scheme, style);
        if (name == "fill") {
            style.fill = ReadPartialFill(scanner, scheme);
            return;
        }
        if (name == "numFmt")
            ReadPartialNumberFormat(scanner, style);
        scanner.SkipElement();
    });
    return style;
}

} // namespace orrery::xlsx
