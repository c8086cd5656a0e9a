#include "engines/builtin/xlsx/look/drawing/diagram.h"

#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xml/reading.h"

#include <algorithm>

namespace orrery::xlsx::drawing {
namespace {

constexpr std::size_t kMaxDiagramNodes = 500000;

/// The relationship that the extension of a data part names.
std::string ShapesRelationship(std::string_view xml)
{
    xml::Scanner scanner(xml);
    while (true) {
        const auto token = scanner.Next();
        if (token == xml::Scanner::Token::End)
            return {};
        if (token == xml::Scanner::Token::StartTag && scanner.LocalName() == "dataModelExt")
            return scanner.AttributeText("relId").value_or("");
    }
}

} // namespace

std::optional<std::string> FindDiagramPart(const Package& package, const std::string& drawingPart,
                                           const std::string& dataRelationship)
{
    const Relationships& relationships = package.RelationshipsOf(drawingPart);
    const Relationship* data = relationships.FindById(dataRelationship);
    if (data == nullptr || data->External)
        return std::nullopt;
    const PartText text = package.ReadXml(ResolveTarget(drawingPart, data->Target));
    const Relationship* shapes = relationships.FindById(ShapesRelationship(*text));
    if (shapes == nullptr || shapes->External || !shapes->Is("diagramDrawing"))
        return std::nullopt;
    return ResolveTarget(drawingPart, shapes->Target);
}

DiagramShapes::DiagramShapes(std::string_view xml)
{
    xml::Scanner scanner(xml);
    xml::EnterRoot(scanner);
    tree_ = std::make_unique<xml::Tree>(
        scanner, [](std::string_view) { return false; }, kMaxDiagramNodes);
    for (const xml::Element shape : Root()) {
        const xml::Element transform = shape.Child("spPr").Child("xfrm");
        const xml::Element offset = transform.Child("off");
        const xml::Element extent = transform.Child("ext");
        const auto right = EmuOf(offset, "x", 0) + EmuOf(extent, "cx", 0);
        const auto bottom = EmuOf(offset, "y", 0) + EmuOf(extent, "cy", 0);
        width_ = std::max(width_, static_cast<double>(right));
        height_ = std::max(height_, static_cast<double>(bottom));
    }
}

xml::Element DiagramShapes::Root() const
{
    return tree_->Root().Child("spTree");
}

} // namespace orrery::xlsx::drawing
