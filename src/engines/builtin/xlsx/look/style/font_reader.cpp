#include "engines/builtin/xlsx/look/style/font_reader.h"

#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xml/reading.h"

#include <array>
#include <string>
#include <string_view>

namespace orrery::xlsx {
namespace {

using book::Font;
using book::TextPosition;
using book::Underline;

constexpr double kMaxFontSize = 409.55;   // of Excel
constexpr std::size_t kMaxFontName = 255; // bytes; Excel has at most 31 characters
constexpr std::array<std::string_view, 2> kSchemes = {"major", "minor"};

constexpr Words<Underline, 5> kUnderlines = {{
    {"none", Underline::None},
    {"single", Underline::Single},
    {"double", Underline::Double},
    {"singleAccounting", Underline::SingleAccounting},
    {"doubleAccounting", Underline::DoubleAccounting},
}};
constexpr Words<TextPosition, 3> kPositions = {{
    {"baseline", TextPosition::Baseline},
    {"superscript", TextPosition::Superscript},
    {"subscript", TextPosition::Subscript},
}};

void ReadSize(const xml::Scanner& scanner, Font& font)
{
    const auto size = NumberAttribute(scanner, "val");
    if (size && *size >= 1 && *size <= kMaxFontSize)
        font.size = *size;
}

void ReadName(const xml::Scanner& scanner, Font& font)
{
    auto name = scanner.AttributeText("val");
    if (name && !name->empty() && name->size() <= kMaxFontName)
        font.name = std::move(*name);
}

void ReadProperty(const xml::Scanner& scanner, const ColorScheme& scheme, Font& font)
{
    const std::string_view name = scanner.LocalName();
    if (name == "sz")
        ReadSize(scanner, font);
    else if (name == "color")
        font.color = ReadColor(scanner, scheme);
    else if (name == "name" || name == "rFont")
        ReadName(scanner, font);
    else if (name == "b")
        font.bold = ReadToggle(scanner);
    else if (name == "i")
        font.italic = ReadToggle(scanner);
    else if (name == "strike")
        font.strike = ReadToggle(scanner);
    else if (name == "u")
        font.underline = ReadUnderline(scanner);
    else if (name == "vertAlign")
        font.position = WordAttribute(scanner, "val", kPositions).value_or(TextPosition::Baseline);
}

} // namespace

bool ReadToggle(const xml::Scanner& scanner)
{
    return FlagAttribute(scanner, "val", true);
}

Underline ReadUnderline(const xml::Scanner& scanner)
{
    return WordAttribute(scanner, "val", kUnderlines).value_or(Underline::Single);
}

Font ReadFont(xml::Scanner& scanner, const ColorScheme& scheme, const Font& base)
{
    Font font = base;
    std::string_view themeFont;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "scheme") {
            for (const std::string_view one : kSchemes) {
                if (const auto value = scanner.Attribute("val"); value && value->raw == one)
                    themeFont = one;
            }
        }
        else {
            ReadProperty(scanner, scheme, font);
        }
        scanner.SkipElement();
    });
    if (!themeFont.empty())
        font.name = scheme.theme.FontFor(themeFont, font.name);
    return font;
}

} // namespace orrery::xlsx
