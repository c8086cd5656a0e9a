#include "engines/builtin/xlsx/look/drawing/shapes.h"

#include "engines/builtin/xlsx/look/drawing/chart/chart_part.h"
#include "engines/builtin/xlsx/look/drawing/diagram.h"
#include "engines/builtin/xlsx/look/drawing/geometry/custom_geometry.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/text_body.h"
#include "util/error.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace orrery::xlsx::drawing {
namespace {

constexpr std::size_t kMaxAdjustments = 16;

/// The properties that are common to all: "nvSpPr", "nvPicPr", "nvGraphicFramePr" ... come first.
xml::Element CommonProperties(const xml::Element& element)
{
    return element.First().Child("cNvPr");
}

xml::Element TransformOf(const xml::Element& element)
{
    if (const xml::Element own = element.Child("xfrm")) // of frames
        return own;
    const xml::Element group = element.Child("grpSpPr");
    return (group ? group : element.Child("spPr")).Child("xfrm");
}

double Emu(const xml::Element& element, std::string_view attribute)
{
    return static_cast<double>(EmuOf(element, attribute, 0));
}

void ReadTurn(const xml::Element& transform, book::Drawing& drawing)
{
    drawing.rotation = DegreesOf(transform, "rot");
    if (drawing.rotation < 0)
        drawing.rotation += 360;
    drawing.flipsHorizontally = FlagOf(transform, "flipH", false);
    drawing.flipsVertically = FlagOf(transform, "flipV", false);
}

/// The position of an adjustment in its geometry: "adj" and "adj1" are the first.
std::optional<std::size_t> AdjustmentIndex(std::string_view name)
{
    if (!name.starts_with("adj"))
        return std::nullopt;
    name.remove_prefix(3);
    if (name.empty())
        return 0;
    if (name.size() > 2 || name.find_first_not_of("0123456789") != name.npos)
        return std::nullopt;
    std::size_t number = 0;
    for (const char digit : name)
        number = number * 10 + static_cast<std::size_t>(digit - '0');
    if (number < 1 || number > kMaxAdjustments)
        return std::nullopt;
    return number - 1;
}

void ReadPreset(const xml::Element& preset, book::Drawing& drawing)
{
    if (preset.Has("prst"))
        drawing.geometry = preset.Attribute("prst");
    for (const xml::Element guide : preset.Child("avLst")) {
        const auto index = AdjustmentIndex(guide.Attribute("name"));
        const std::string formula = guide.Attribute("fmla");
        if (!index || !formula.starts_with("val "))
            continue;
        if (drawing.adjustments.size() <= *index)
            drawing.adjustments.resize(*index + 1, std::numeric_limits<double>::quiet_NaN());
        drawing.adjustments[*index] = ValueOfFormula(formula);
    }
}

bool IsLineGeometry(std::string_view geometry)
{
    return geometry == "line" || geometry == "lineInv" || geometry.ends_with("Connector1");
}

bool IsShapeName(std::string_view name)
{
    return name == "sp" || name == "cxnSp" || name == "pic" || name == "grpSp" ||
           name == "graphicFrame";
}

/// A shape and those in it.
std::size_t CountShapes(const xml::Element& element)
{
    std::size_t count = 1;
    if (element.Name() != "grpSp")
        return count;
    for (const xml::Element child : element) {
        if (IsShapeName(child.Name()))
            count += CountShapes(child);
    }
    return count;
}

/// A rectangle of a group's coordinates as shares of the group.
template <typename Space> book::ShareBox PlaceIn(const Space& space, const xml::Element& transform)
{
    if (space.width <= 0 || space.height <= 0)
        return {};
    const xml::Element offset = transform.Child("off");
    const xml::Element extent = transform.Child("ext");
    book::ShareBox box;
    box.left = (Emu(offset, "x") - space.x) / space.width;
    box.top = (Emu(offset, "y") - space.y) / space.height;
    box.right = box.left + Emu(extent, "cx") / space.width;
    box.bottom = box.top + Emu(extent, "cy") / space.height;
    return box;
}

book::ShareBox CropOf(const xml::Element& source)
{
    const auto share = [&](const char* side) {
        return std::clamp(ShareOf(source, side).value_or(0), -10.0, 10.0);
    };
    const book::ShareBox box{share("l"), share("t"), 1 - share("r"), 1 - share("b")};
    return box.right > box.left && box.bottom > box.top ? box : book::ShareBox();
}

} // namespace

std::optional<book::Drawing> ShapeReader::Read(const xml::Element& element)
{
    return ReadIn(element, nullptr, 0);
}

std::optional<book::Drawing> ShapeReader::ReadIn(const xml::Element& element,
                                                 const GroupSpace* space, int depth)
{
    const std::string_view name = element.Name();
    if (!IsShapeName(name) || FlagOf(CommonProperties(element), "hidden", false))
        return std::nullopt;
    if (budget_.shapes >= ShapeBudget::kMaxShapes) {
        budget_.tooMany += CountShapes(element);
        return std::nullopt;
    }
    ++budget_.shapes;
    book::Drawing drawing;
    drawing.name = CommonProperties(element).Attribute("name");
    const xml::Element transform = TransformOf(element);
    ReadTurn(transform, drawing);
    if (space != nullptr)
        drawing.place = PlaceIn(*space, transform);
    if (name == "pic")
        ReadPicture(element, drawing);
    else if (name == "grpSp")
        ReadGroup(element, space, depth, drawing);
    else if (name == "graphicFrame")
        ReadFrame(element, depth, drawing);
    else
        ReadShape(element, space, drawing);
    return drawing;
}

void ShapeReader::ReadGeometry(const xml::Element& properties, book::Drawing& drawing)
{
    const xml::Element custom = properties.Child("custGeom");
    if (!custom)
        return ReadPreset(properties.Child("prstGeom"), drawing);
    const xml::Element extent = properties.Child("xfrm").Child("ext");
    drawing.geometry = "custom";
    drawing.freeform =
        ReadCustomGeometry(custom, Emu(extent, "cx"), Emu(extent, "cy"), budget_.stepsLeft);
    budget_.tooFine += drawing.freeform == nullptr;
}

void ShapeReader::ReadLook(const xml::Element& element, const GroupSpace* space,
                           book::Drawing& drawing)
{
    const xml::Element properties = element.Child("spPr");
    const xml::Element style = element.Child("style");
    ReadGeometry(properties, drawing);
    ShapeFill fill = ReadFill(properties, {style_.theme, std::nullopt});
    if (fill.kind == ShapeFill::Kind::NotGiven)
        fill = ReferredFill(style.Child("fillRef"), style_);
    if (fill.kind == ShapeFill::Kind::OfGroup && space != nullptr)
        fill = space->fill;
    if (fill.kind == ShapeFill::Kind::Filled) {
        drawing.fill = fill.fill;
        drawing.fillOpacity = fill.opacity;
    }
    else if (fill.kind == ShapeFill::Kind::Picture)
        pictures_.Load(part_, fill.picture, drawing);
    const ShapeLine line = ReadLine(properties.Child("ln"), style.Child("lnRef"), style_);
    drawing.outline = line.outline;
    drawing.hasArrowAtStart = line.hasArrowAtStart;
    drawing.hasArrowAtEnd = line.hasArrowAtEnd;
}

void ShapeReader::ReadShape(const xml::Element& element, const GroupSpace* space,
                            book::Drawing& drawing)
{
    drawing.kind = book::DrawingKind::Shape;
    ReadLook(element, space, drawing);
    if (element.Name() == "cxnSp" || IsLineGeometry(drawing.geometry)) {
        drawing.kind = book::DrawingKind::Line;
        drawing.fill.reset(); // connectors have no inside
    }
    drawing.text = ReadTextBody(element.Child("txBody"), element.Child("style").Child("fontRef"),
                                style_.theme);
}

void ShapeReader::ReadPicture(const xml::Element& element, book::Drawing& drawing)
{
    ReadLook(element, nullptr, drawing);
    const xml::Element fill = element.Child("blipFill");
    drawing.crop = CropOf(fill.Child("srcRect"));
    drawing.kind = book::DrawingKind::Picture;
    // The blip itself is a raster picture even where an extension names an SVG one.
    const xml::Element blip = fill.Child("blip");
    const std::string embedded = blip.Prefixed("embed");
    if (!pictures_.Load(part_, embedded.empty() ? blip.Prefixed("link") : embedded, drawing)) {
        drawing.kind = book::DrawingKind::Placeholder;
        drawing.description = "picture";
    }
}

void ShapeReader::ReadGroup(const xml::Element& element, const GroupSpace* space, int depth,
                            book::Drawing& drawing)
{
    drawing.kind = book::DrawingKind::Group;
    drawing.outline.isVisible = false;
    const xml::Element transform = TransformOf(element);
    GroupSpace own;
    own.x = Emu(transform.Child("chOff"), "x");
    own.y = Emu(transform.Child("chOff"), "y");
    own.width = Emu(transform.Child("chExt"), "cx");
    own.height = Emu(transform.Child("chExt"), "cy");
    own.fill = ReadFill(element.Child("grpSpPr"), {style_.theme, std::nullopt});
    if (own.fill.kind == ShapeFill::Kind::OfGroup && space != nullptr)
        own.fill = space->fill;
    ReadChildren(element, own, depth, drawing);
}

void ShapeReader::ReadChildren(const xml::Element& element, const GroupSpace& space, int depth,
                               book::Drawing& drawing)
{
    if (depth >= ShapeBudget::kMaxNesting) {
        budget_.tooDeep += CountShapes(element);
        return;
    }
    for (const xml::Element child : element) {
        if (auto read = ReadIn(child, &space, depth + 1))
            drawing.children.push_back(std::move(*read));
    }
}

void ShapeReader::ReadFrame(const xml::Element& element, int depth, book::Drawing& drawing)
{
    const xml::Element data = element.Child("graphic").Child("graphicData");
    const std::string uri = data.Attribute("uri");
    const std::string_view kind = std::string_view(uri).substr(uri.rfind('/') + 1);
    drawing.kind = book::DrawingKind::Placeholder;
    drawing.outline.isVisible = false;
    if (kind == "chart")
        ReadChart(data.Child("chart").Prefixed("id"), false, drawing);
    else if (kind == "chartex")
        ReadChart(data.Child("chart").Prefixed("id"), true, drawing);
    else if (kind == "diagram")
        ReadDiagram(data, depth, drawing);
    else if (kind == "slicer")
        drawing.description = "slicer";
    else if (kind == "timeslicer")
        drawing.description = "timeline";
    else
        drawing.description = "object";
}

std::optional<std::string> ShapeReader::TargetOf(const std::string& relationship) const
{
    const Relationship* found = package_.RelationshipsOf(part_).FindById(relationship);
    if (found == nullptr || found->External)
        return std::nullopt;
    return ResolveTarget(part_, found->Target);
}

std::shared_ptr<const book::Chart> ShapeReader::FindChart(const std::string& part, bool isExtended)
{
    const auto [place, isNew] = budget_.charts.try_emplace(PartKey(part));
    if (isNew)
        place->second = ReadChartPart(package_, part, isExtended, style_);
    return place->second;
}

void ShapeReader::ReadChart(const std::string& relationship, bool isExtended,
                            book::Drawing& drawing)
{
    drawing.description = "chart";
    try {
        const auto target = TargetOf(relationship);
        auto chart = target ? FindChart(*target, isExtended) : nullptr;
        if (chart == nullptr) {
            ++budget_.unreadable;
            return;
        }
        drawing.kind = book::DrawingKind::Chart;
        drawing.chart = std::move(chart);
        drawing.description.clear();
    }
    catch (const util::Error&) {
        ++budget_.unreadable;
    }
}

void ShapeReader::ReadDiagram(const xml::Element& data, int depth, book::Drawing& drawing)
{
    drawing.description = "diagram";
    if (budget_.diagrams == ShapeBudget::kMaxDiagrams)
        return;
    ++budget_.diagrams;
    try {
        const auto target = FindDiagramPart(package_, part_, data.Child("relIds").Prefixed("dm"));
        const auto text = target ? package_.ReadXml(*target) : nullptr;
        if (text == nullptr)
            return;
        const DiagramShapes shapes(*text);
        GroupSpace space;
        space.width = shapes.Width();
        space.height = shapes.Height();
        ShapeReader reader(package_, *target, style_, pictures_, budget_);
        reader.ReadChildren(shapes.Root(), space, depth, drawing);
        drawing.kind = book::DrawingKind::Group;
        drawing.description.clear();
    }
    catch (const util::Error&) {
        ++budget_.unreadable;
    }
}

} // namespace orrery::xlsx::drawing
