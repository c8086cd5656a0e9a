#include "engines/builtin/xlsx/sheet/sheet_identities.h"

#include <utility>

namespace orrery::xlsx {

namespace {

using Token = xml::Scanner::Token;

xml::TextRange ValueOf(const xml::ScannedAttribute& attribute)
{
    return {attribute.valueBegin, attribute.end - 1};
}

/// Adds the binding whose start tag the scanner is at, and reads it to its end. `extensions` are
/// where the enclosing <ext> elements begin.
void AddBinding(xml::Scanner& element, const std::vector<std::size_t>& extensions,
                SheetIdentities& found)
{
    const auto id = element.Attribute("appRef");
    if (!id)
        return;
    SheetIdentities::Binding binding{
        xml::DecodeAttribute(id->raw), ValueOf(*id), {element.Begin(), 0}, {}};
    if (!extensions.empty())
        binding.extension.begin = extensions.back();
    element.SkipElement();
    binding.element.end = element.End();
    found.bindings.push_back(std::move(binding));
}

void EndExtension(std::size_t begin, std::size_t end, SheetIdentities& found)
{
    auto& bindings = found.bindings;
    for (auto one = bindings.rbegin(); one != bindings.rend() && one->extension.begin == begin;
         ++one)
        one->extension.end = end;
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
    std::vector<std::size_t> extensions; // where the open ones begin
    for (auto token = Token::StartTag;; token = scanner.Next()) {
        if (token == Token::StartTag) {
            AddIdentities(scanner, found);
            if (scanner.LocalName() == "ext")
                extensions.push_back(scanner.Begin());
            else if (scanner.LocalName() == "webExtension")
                AddBinding(scanner, extensions, found);
        }
        else if (token == Token::EndTag && scanner.LocalName() == "ext") {
            EndExtension(extensions.back(), scanner.End(), found);
            extensions.pop_back();
        }
        if (scanner.Depth() < depth)
            return;
    }
}

} // namespace orrery::xlsx
