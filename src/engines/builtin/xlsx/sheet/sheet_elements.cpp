#include "engines/builtin/xlsx/sheet/sheet_elements.h"

#include <algorithm>

namespace orrery::xlsx {

namespace {

/// The scanner's start tag; `base` is the offset of the scanner's text in the whole text.
StartTag CurrentTag(const xml::Scanner& scanner, std::size_t base)
{
    StartTag tag;
    tag.name = scanner.Name();
    tag.prefix = tag.name.substr(0, tag.name.size() - scanner.LocalName().size());
    tag.begin = base + scanner.Begin();
    tag.nameEnd = tag.begin + 1 + tag.name.size();
    tag.end = base + scanner.End();
    tag.isEmpty = scanner.IsEmptyElement();
    tag.attributes = scanner.Attributes();
    for (xml::ScannedAttribute& attribute : tag.attributes) {
        attribute.begin += base;
        attribute.valueBegin += base;
        attribute.end += base;
    }
    return tag;
}

FormulaElement ReadFormula(xml::Scanner& scanner, std::size_t base)
{
    FormulaElement formula{CurrentTag(scanner, base), 0, scanner.ElementText()};
    formula.end = base + scanner.End();
    return formula;
}

} // namespace

std::optional<xml::ScannedAttribute> StartTag::Attribute(std::string_view attributeName) const
{
    for (const xml::ScannedAttribute& attribute : attributes)
        if (attribute.name == attributeName)
            return attribute;
    return std::nullopt;
}

std::string StartTag::Without(std::string_view xml,
                              const std::vector<std::string_view>& dropped) const
{
    std::string text(xml.substr(begin, nameEnd - begin));
    for (const xml::ScannedAttribute& attribute : attributes)
        if (std::find(dropped.begin(), dropped.end(), attribute.name) == dropped.end())
            text += xml.substr(attribute.begin, attribute.end - attribute.begin);
    return text;
}

StartTag ReadStartTag(std::string_view xml, std::size_t begin)
{
    xml::Scanner scanner(xml.substr(begin));
    scanner.Next();
    return CurrentTag(scanner, begin);
}

CellElement ReadCellElement(std::string_view xml, std::size_t begin)
{
    xml::Scanner scanner(xml.substr(begin));
    scanner.Next();
    CellElement cell;
    cell.tag = CurrentTag(scanner, begin);
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        const std::size_t childBegin = begin + scanner.Begin();
        if (name == "f") {
            cell.formula = ReadFormula(scanner, begin);
            return;
        }
        scanner.SkipElement();
        if (name == "v" || name == "is")
            cell.values.push_back({childBegin, begin + scanner.End()});
    });
    cell.end = begin + scanner.End();
    return cell;
}

} // namespace orrery::xlsx
