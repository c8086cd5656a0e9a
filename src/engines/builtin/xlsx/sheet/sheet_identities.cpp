#include "engines/builtin/xlsx/sheet/sheet_identities.h"

namespace orrery::xlsx {

namespace {

using Token = xml::Scanner::Token;

xml::TextRange ValueOf(const xml::ScannedAttribute& attribute)
{
    return {attribute.valueBegin, attribute.end - 1};
}

void BeginBinding(const xml::Scanner& element, std::size_t extension, SheetIdentities& found)
{
    const auto id = element.Attribute("appRef");
    if (element.LocalName() != "webExtension" || !id)
        return;
    found.bindings.push_back(
        {xml::DecodeAttribute(id->raw), ValueOf(*id), {element.Begin(), 0}, {extension, 0}});
}

void EndBinding(const xml::Scanner& element, std::size_t extension, SheetIdentities& found)
{
    const std::string_view name = element.LocalName();
    auto& bindings = found.bindings;
    if (name == "webExtension" && !bindings.empty() && bindings.back().element.end == 0)
        bindings.back().element.end = element.End();
    if (name != "ext")
        return;
    for (auto one = bindings.rbegin(); one != bindings.rend() && one->extension.begin == extension;
         ++one)
        one->extension.end = element.End();
}

} // namespace

void AddIdentities(const xml::Scanner& element, SheetIdentities& found)
{
    const std::string_view name = element.LocalName();
    const bool hasShape = name == "control" || name == "oleObject";
    for (const xml::ScannedAttribute& attribute : element.Attributes()) {
        if (attribute.name.ends_with(":uid"))
            found.uids.push_back(ValueOf(attribute));
        else if (hasShape && attribute.name == "shapeId")
            found.shapes.push_back(ValueOf(attribute));
        else if (name == "legacyDrawing" && attribute.name.ends_with(":id"))
            found.drawing = xml::DecodeAttribute(attribute.raw);
    }
}

void ReadIdentities(xml::Scanner& scanner, SheetIdentities& found)
{
    const std::size_t depth = scanner.Depth();
    std::size_t extension = scanner.Begin(); // of the last <ext>
    for (auto token = Token::StartTag;; token = scanner.Next()) {
        if (token == Token::StartTag) {
            if (scanner.LocalName() == "ext")
                extension = scanner.Begin();
            AddIdentities(scanner, found);
            BeginBinding(scanner, extension, found);
        }
        else if (token == Token::EndTag) {
            EndBinding(scanner, extension, found);
            if (scanner.Depth() < depth)
                return;
        }
    }
}

} // namespace orrery::xlsx
