#include "engines/builtin/xlsx/declarations.h"

#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xml/reading.h"

#include <string_view>
#include <utility>

namespace orrery::xlsx {
namespace {

bool Declares(PartKind kind)
{
    return kind == PartKind::Table || kind == PartKind::Slicers || kind == PartKind::SlicerCache ||
           kind == PartKind::AddIn || kind == PartKind::Chart2016;
}

/// Whether an element refers to data of a chart, or to the name of that data.
bool IsChartFormula(std::string_view localName)
{
    return localName == "f" || localName == "nf";
}

} // namespace

std::vector<Declaration> DeclarationsIn(const Package& package, const std::string& part,
                                        PartKind kind)
{
    std::vector<Declaration> declared;
    if (!Declares(kind))
        return declared;
    const auto xml = package.ReadXml(part);
    xml::Scanner element(*xml, part);
    const auto text = [&](std::string_view name) {
        return element.AttributeText(name).value_or("");
    };
    for (auto token = element.Next(); token != xml::Scanner::Token::End; token = element.Next()) {
        if (token != xml::Scanner::Token::StartTag)
            continue;
        if (kind == PartKind::Table && element.Depth() == 1) {
            const auto id = xml::ReadDigits(text("id")).value_or(0);
            declared.push_back({kind, text("displayName"), static_cast<std::uint32_t>(id)});
        }
        else if (kind == PartKind::Slicers && IsSlicer(element.LocalName())) {
            declared.push_back({kind, text("name"), 0, text("cache")});
        }
        else if (kind == PartKind::SlicerCache && element.Depth() == 1) {
            declared.push_back({kind, text("name"), 0});
        }
        else if (kind == PartKind::AddIn && element.LocalName() == "binding") {
            declared.push_back({kind, text("appref"), 0});
        }
        else if (kind == PartKind::Chart2016 && IsChartFormula(element.LocalName())) {
            if (auto formula = element.ElementText(); IsChartData(formula))
                declared.push_back({kind, std::move(formula), 0});
        }
    }
    return declared;
}

} // namespace orrery::xlsx
