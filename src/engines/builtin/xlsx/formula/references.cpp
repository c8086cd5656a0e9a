#include "engines/builtin/xlsx/formula/references.h"

#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/scanner.h"

#include <algorithm>
#include <array>

namespace orrery::xlsx {
namespace {

using SiteKind = ReferenceSite::Kind;
using Token = xml::Scanner::Token;

// Elements whose content is a formula, by local name: cells and charts (f), chart data of charts of
// the 2016 kind (nf), references of chart extensions (sqref), conditional formats (formula),
// validations (formula1, formula2), tables.
constexpr std::array<std::string_view, 8> kFormulaElements = {"f",
                                                              "nf",
                                                              "sqref",
                                                              "formula",
                                                              "formula1",
                                                              "formula2",
                                                              "calculatedColumnFormula",
                                                              "totalsRowFormula"};

struct AttributePlace {
    std::string_view element; // local name
    std::string_view attribute;
    SiteKind kind;
};
constexpr std::array<AttributePlace, 23> kAttributePlaces = {{
    {"hyperlink", "location", SiteKind::Location},
    {"cfvo", "val", SiteKind::FormulaAttribute},
    {"controlPr", "linkedCell", SiteKind::FormulaAttribute},
    {"controlPr", "listFillRange", SiteKind::FormulaAttribute},
    {"controlPr", "macro", SiteKind::FormulaAttribute},
    {"objectPr", "macro", SiteKind::FormulaAttribute},
    {"formControlPr", "fmlaGroup", SiteKind::FormulaAttribute},
    {"formControlPr", "fmlaLink", SiteKind::FormulaAttribute},
    {"formControlPr", "fmlaRange", SiteKind::FormulaAttribute},
    {"formControlPr", "fmlaTxbx", SiteKind::FormulaAttribute},
    {"sp", "textlink", SiteKind::FormulaAttribute},
    {"sp", "macro", SiteKind::FormulaAttribute},
    {"cxnSp", "macro", SiteKind::FormulaAttribute},
    {"pic", "macro", SiteKind::FormulaAttribute},
    {"graphicFrame", "macro", SiteKind::FormulaAttribute},
    {"cameraTool", "cellRange", SiteKind::FormulaAttribute}, // a linked picture
    {"parameter", "cell", SiteKind::FormulaAttribute},       // of a query
    {"worksheetSource", "sheet", SiteKind::SheetName},
    {"worksheetSource", "name", SiteKind::TableName},
    {"rangeSet", "sheet", SiteKind::SheetName},
    {"rangeSet", "name", SiteKind::TableName},
    {"dataRef", "sheet", SiteKind::SheetName},
    {"dataRef", "name", SiteKind::TableName},
}};

bool IsFormulaElement(std::string_view name)
{
    return std::find(kFormulaElements.begin(), kFormulaElements.end(), name) !=
           kFormulaElements.end();
}

/// Checks the undecoded text, in which "!" and "[" may also be written as character references.
bool MayReferToSomething(std::string_view raw)
{
    return raw.find_first_of("![") != raw.npos || raw.find("&#") != raw.npos || IsChartData(raw);
}

bool IsWorthListing(SiteKind kind, std::string_view raw)
{
    const bool bareName = kind == SiteKind::SheetName || kind == SiteKind::TableName;
    return bareName ? !raw.empty() : MayReferToSomething(raw);
}

/// Whether the element refers to another file: r:id, whatever the prefix.
bool HasRelationship(const xml::Scanner& element)
{
    const auto& attributes = element.Attributes();
    return std::any_of(
        attributes.begin(), attributes.end(),
        [](const xml::ScannedAttribute& attribute) { return attribute.name.ends_with(":id"); });
}

/// Whether a start tag is one like "x:FmlaLink".
bool IsVmlFormula(std::string_view tag)
{
    const std::size_t colon = tag.find(':');
    return colon != tag.npos && !tag.starts_with('/') && !tag.ends_with('/') &&
           tag.substr(colon + 1).starts_with("Fmla");
}

void AddAttributes(std::vector<ReferenceSite>& sites, const xml::Scanner& element,
                   std::string_view localName)
{
    for (const AttributePlace& place : kAttributePlaces) {
        if (place.element != localName)
            continue;
        const auto attribute = element.Attribute(place.attribute);
        const bool elsewhere = place.kind != SiteKind::FormulaAttribute && HasRelationship(element);
        if (attribute && IsWorthListing(place.kind, attribute->raw) && !elsewhere) {
            sites.push_back({place.kind, attribute->valueBegin, attribute->end - 1});
        }
    }
}

/// The decoded content of an element that contains no elements.
std::string DecodeContent(std::string_view raw)
{
    if (raw.find('<') == raw.npos)
        return xml::DecodeText(raw);
    std::string element = "<f>"; // the scanner handles CDATA sections and comments
    element.append(raw).append("</f>");
    xml::Scanner scanner(element);
    scanner.Next();
    return scanner.ElementText();
}

/// "[Book1.xlsx]My Sheet!Sales" as a chart refers to its pivot table: without apostrophes, and with
/// the name that the workbook's file once had.
std::optional<std::string> RenameInPivotTable(std::string_view text, const SheetNames& sheets)
{
    const std::size_t bracket = text.find(']');
    const std::size_t begin = bracket == text.npos ? 0 : bracket + 1;
    const std::size_t end = text.rfind('!');
    if (!sheets || end == text.npos || end < begin)
        return std::nullopt;
    const auto renamed = sheets(text.substr(begin, end - begin));
    if (!renamed)
        return std::nullopt;
    return std::string(text.substr(0, begin)) + *renamed + std::string(text.substr(end));
}

std::optional<std::string> RenameValue(SiteKind kind, std::string_view value,
                                       const SheetNames& sheets, const TableNames& tables)
{
    switch (kind) {
    case SiteKind::FormulaText:
    case SiteKind::FormulaAttribute:
        return RenameInFormula(value, sheets, tables);
    case SiteKind::Location:
        return RenameInLocation(value, sheets);
    case SiteKind::SheetName:
        return sheets ? sheets(value) : std::nullopt;
    case SiteKind::TableName:
        return tables.NameOf(value);
    case SiteKind::PivotTable:
        return RenameInPivotTable(value, sheets);
    }
    return std::nullopt;
}

bool IsContent(SiteKind kind)
{
    return kind == SiteKind::FormulaText || kind == SiteKind::PivotTable;
}

} // namespace

std::vector<ReferenceSite> FindReferences(std::string_view xml, std::string_view partName)
{
    std::vector<ReferenceSite> sites;
    std::optional<ReferenceSite> open; // being read; it has no elements so far
    bool inPivotSource = false;
    xml::Scanner scanner(xml, partName);
    for (auto token = scanner.Next(); token != Token::End; token = scanner.Next()) {
        if (token == Token::StartTag) {
            open.reset();
            const std::string_view name = scanner.LocalName();
            if (name.size() == 1 && name != "f")
                continue; // cells and their values, which most elements of a large sheet are
            if (IsFormulaElement(name)) {
                open = ReferenceSite{SiteKind::FormulaText, scanner.End(), 0};
            }
            else if (inPivotSource && name == "name") {
                open = ReferenceSite{SiteKind::PivotTable, scanner.End(), 0};
            }
            else {
                AddAttributes(sites, scanner, name);
            }
            inPivotSource = name == "pivotSource";
        }
        else if (token == Token::EndTag && open) {
            open->end = std::max(scanner.Begin(), open->begin);
            if (MayReferToSomething(xml.substr(open->begin, open->end - open->begin)))
                sites.push_back(*open);
            open.reset();
        }
    }
    return sites;
}

std::vector<ReferenceSite> FindVmlReferences(std::string_view vml)
{
    std::vector<ReferenceSite> sites;
    for (std::size_t at = vml.find('<'); at != vml.npos; at = vml.find('<', at + 1)) {
        const std::size_t tagEnd = vml.find_first_of("<>", at + 1);
        if (tagEnd == vml.npos)
            break;
        if (vml[tagEnd] != '>' || !IsVmlFormula(vml.substr(at + 1, tagEnd - at - 1)))
            continue;
        const std::size_t begin = tagEnd + 1;
        const std::size_t end = std::min(vml.find('<', begin), vml.size());
        if (MayReferToSomething(vml.substr(begin, end - begin)))
            sites.push_back({SiteKind::FormulaText, begin, end});
    }
    return sites;
}

TextPatch RenameReferences(std::string_view xml, const std::vector<ReferenceSite>& sites,
                           const SheetNames& sheets, const TableNames& tables)
{
    TextPatch patch;
    for (const ReferenceSite& site : sites) {
        const std::string_view raw = xml.substr(site.begin, site.end - site.begin);
        const bool content = IsContent(site.kind);
        const auto value = content ? DecodeContent(raw) : xml::DecodeAttribute(raw);
        const auto renamed = RenameValue(site.kind, value, sheets, tables);
        if (renamed) {
            patch.Replace(site.begin, site.end,
                          content ? xml::EncodeText(*renamed)
                                  : xml::EncodeAttributeAt(xml, site.begin, *renamed));
        }
    }
    return patch;
}

std::optional<std::string> RenameInLocation(std::string_view location, const SheetNames& sheets)
{
    const std::size_t hash = location.starts_with('#') ? 1 : 0;
    const std::string_view place = location.substr(hash);
    const std::size_t end = place.rfind('!');
    std::optional<std::string> renamed;
    if (const auto name =
            sheets && end != place.npos ? sheets(place.substr(0, end)) : std::nullopt) {
        renamed = QuoteSheetName(*name) + std::string(place.substr(end));
    }
    else {
        renamed = RenameInFormula(place, sheets, {});
    }
    return renamed ? std::optional(std::string(location.substr(0, hash)) + *renamed) : std::nullopt;
}

} // namespace orrery::xlsx
