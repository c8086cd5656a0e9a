#include "engines/builtin/xlsx/look/style/style_sheet_reader.h"

#include "engines/builtin/xlsx/look/style/alignment_reader.h"
#include "engines/builtin/xlsx/look/style/attributes.h"
#include "engines/builtin/xlsx/look/style/border_reader.h"
#include "engines/builtin/xlsx/look/style/differential_style.h"
#include "engines/builtin/xlsx/look/style/fill_reader.h"
#include "engines/builtin/xlsx/look/style/font_reader.h"
#include "engines/builtin/xml/reading.h"

namespace orrery::xlsx {
namespace {

// Excel has at most 65,490 formats, and less of everything else.
constexpr std::size_t kMaxItems = 65536;
constexpr std::size_t kMaxTableStyles = 1000;
constexpr std::size_t kMaxTableElements = 64;
constexpr std::int32_t kMaxStripe = 9; ///< rows or columns

/// Reads the children of that name with `read` into a list.
template <typename Item, typename Read>
void ReadItems(xml::Scanner& scanner, std::string_view name, std::vector<Item>& items, Read read)
{
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == name && items.size() < kMaxItems)
            items.push_back(read());
        else
            scanner.SkipElement();
    });
}

} // namespace

void StyleSheetReader::Read()
{
    ReadOwnPalette(); // it comes last, but colours need it
    xml::Scanner scanner(xml_);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] { ReadList(scanner); });
}

void StyleSheetReader::ReadOwnPalette()
{
    xml::Scanner scanner(xml_);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "colors")
            return scanner.SkipElement();
        xml::ForEachChild(scanner, [&] {
            if (scanner.LocalName() != "indexedColors")
                return scanner.SkipElement();
            std::size_t index = 0;
            xml::ForEachChild(scanner, [&] {
                const auto rgb = scanner.Attribute("rgb");
                const auto color = rgb ? builtin::ParseHexColor(rgb->raw) : std::nullopt;
                if (color && index < lists_.colors.palette.size())
                    lists_.colors.palette[index] = *color;
                ++index;
                scanner.SkipElement();
            });
        });
    });
}

void StyleSheetReader::ReadList(xml::Scanner& scanner)
{
    const std::string_view name = scanner.LocalName();
    const ColorScheme& colors = lists_.colors;
    if (name == "numFmts")
        return ReadNumberFormats(scanner);
    if (name == "fonts") {
        return ReadItems(scanner, "font", lists_.fonts,
                         [&] { return ReadFont(scanner, colors, {}); });
    }
    if (name == "fills")
        return ReadItems(scanner, "fill", lists_.fills, [&] { return ReadFill(scanner, colors); });
    if (name == "borders") {
        return ReadItems(scanner, "border", lists_.borders,
                         [&] { return ReadBorder(scanner, colors); });
    }
    if (name == "cellStyleXfs")
        return ReadFormats(scanner, lists_.bases);
    if (name == "cellXfs")
        return ReadFormats(scanner, lists_.formats);
    if (name == "cellStyles")
        return ReadNamedStyles(scanner);
    if (name == "dxfs") {
        return ReadItems(scanner, "dxf", lists_.differentials,
                         [&] { return ReadDifferentialStyle(scanner, colors); });
    }
    if (name == "tableStyles")
        return ReadTableStyles(scanner);
    scanner.SkipElement();
}

void StyleSheetReader::ReadNumberFormats(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] {
        const auto id = IndexAttribute(scanner, "numFmtId");
        auto code = scanner.AttributeText("formatCode");
        if (id && code && !code->empty() && code->size() <= kMaxFormatCode &&
            lists_.numberFormats.size() < kMaxItems)
            lists_.numberFormats.insert_or_assign(*id, std::move(*code));
        scanner.SkipElement();
    });
}

void StyleSheetReader::ReadFormats(xml::Scanner& scanner, std::vector<CellFormat>& formats)
{
    ReadItems(scanner, "xf", formats, [&] { return ReadFormat(scanner); });
}

CellFormat StyleSheetReader::ReadFormat(xml::Scanner& scanner)
{
    CellFormat format;
    format.font = IndexAttribute(scanner, "fontId");
    format.fill = IndexAttribute(scanner, "fillId");
    format.border = IndexAttribute(scanner, "borderId");
    format.numberFormat = IndexAttribute(scanner, "numFmtId");
    format.base = IndexAttribute(scanner, "xfId").value_or(0);
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "alignment")
            format.alignment = ReadAlignment(scanner);
        scanner.SkipElement();
    });
    return format;
}

void StyleSheetReader::ReadNamedStyles(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] {
        constexpr std::size_t kNormal = 0;
        if (IndexAttribute(scanner, "builtinId") == kNormal)
            lists_.normalBase = IndexAttribute(scanner, "xfId").value_or(0);
        scanner.SkipElement();
    });
}

void StyleSheetReader::ReadTableStyles(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] { ReadTableStyle(scanner); });
}

void StyleSheetReader::ReadTableStyle(xml::Scanner& scanner)
{
    const auto name = scanner.AttributeText("name");
    if (scanner.LocalName() != "tableStyle" || !name ||
        lists_.tableStyles.size() >= kMaxTableStyles)
        return scanner.SkipElement();
    std::vector<TableElement>& elements = lists_.tableStyles[*name];
    xml::ForEachChild(scanner, [&] {
        const auto differential = IndexAttribute(scanner, "dxfId");
        if (differential && elements.size() < kMaxTableElements) {
            elements.push_back({scanner.AttributeText("type").value_or(""), *differential,
                                IntegerAttribute(scanner, "size", 1, kMaxStripe).value_or(1)});
        }
        scanner.SkipElement();
    });
}

} // namespace orrery::xlsx
