#include "engines/builtin/xls/look/drawing/sheet_drawings.h"

#include "engines/builtin/xls/look/drawing/freeform.h"
#include "engines/builtin/xls/look/drawing/geometry_names.h"
#include "engines/builtin/xls/look/drawing/shape_look.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

namespace orrery::xls {
namespace {

constexpr unsigned kIsHidden = 1;     // a bit of the flags of groups
constexpr double kControlInset = 1.5; // points

/// What controls are called; empty for other objects.
std::string_view ControlName(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Button:
        return "button";
    case ObjectKind::CheckBox:
        return "check box";
    case ObjectKind::OptionButton:
        return "option button";
    case ObjectKind::EditBox:
        return "text box";
    case ObjectKind::Label:
        return "label";
    case ObjectKind::DialogBox:
        return "dialog";
    case ObjectKind::Spinner:
        return "spin button";
    case ObjectKind::ScrollBar:
        return "scroll bar";
    case ObjectKind::List:
        return "list box";
    case ObjectKind::GroupBox:
        return "group box";
    case ObjectKind::DropDown:
        return "drop-down list";
    default:
        return {};
    }
}

/// The name that Excel shows for a drawing without one of its own: a word and its number.
std::string UsualName(const book::Drawing& drawing, std::uint16_t type, std::uint16_t id)
{
    using enum book::DrawingKind;
    const auto word = [&]() -> std::string {
        switch (drawing.kind) {
        case Picture:
            return "Picture";
        case Line:
            return "Line";
        case Group:
            return "Group";
        case Chart:
            return "Chart";
        case Control:
            return "Control";
        case Placeholder:
            return "Object";
        default:
            return type == kTextBox ? "Text Box" : "AutoShape";
        }
    };
    return word() + ' ' + std::to_string(id);
}

book::AnchorPoint PointOf(const SheetAnchor& anchor, std::size_t at)
{
    constexpr double kColumnParts = 1024;
    constexpr double kRowParts = 256;
    book::AnchorPoint point;
    point.cell = {anchor.fields[at + 2] + 1, anchor.fields[at] + 1};
    point.shareX = std::min(anchor.fields[at + 1] / kColumnParts, 1.0);
    point.shareY = std::min(anchor.fields[at + 3] / kRowParts, 1.0);
    return point;
}

/// A box of a group as shares of the group, not turned: boxes of what lies on its side are stored
/// as it lies.
book::ShareBox PlaceIn(const ArtBox& space, const ArtBox& box, bool isTurned)
{
    const double width = static_cast<double>(space.right) - space.left;
    const double height = static_cast<double>(space.bottom) - space.top;
    if (width == 0 || height == 0)
        return {};
    double left = std::min(box.left, box.right);
    double right = std::max(box.left, box.right);
    double top = std::min(box.top, box.bottom);
    double bottom = std::max(box.top, box.bottom);
    if (isTurned) {
        const double change = ((bottom - top) - (right - left)) / 2;
        left -= change;
        right += change;
        top += change;
        bottom -= change;
    }
    return {(left - space.left) / width, (top - space.top) / height, (right - space.left) / width,
            (bottom - space.top) / height};
}

} // namespace

std::vector<book::Drawing> SheetDrawings::Read(std::size_t begin)
{
    art_ = ReadSheetArt(source_.stream, begin);
    tree_ = ReadArtTree(art_.art);
    for (ArtShape& shape : tree_.shapes)
        shape.properties.SetDefaults(&pictures_.Defaults());
    std::vector<book::Drawing> drawings;
    if (!tree_.shapes.empty())
        drawings = ConvertAll(tree_.shapes[0].children, nullptr);
    Report();
    return drawings;
}

std::vector<book::Drawing> SheetDrawings::ConvertAll(const std::vector<std::size_t>& shapes,
                                                     const ArtShape* group)
{
    std::vector<book::Drawing> drawings;
    for (const std::size_t index : shapes) {
        const ArtShape& shape = tree_.shapes[index];
        auto drawing = Convert(shape);
        if (!drawing)
            continue;
        const bool isTurned = LiesOnItsSide(drawing->rotation);
        if (group == nullptr && shape.anchor) {
            drawing->anchor = {PointOf(*shape.anchor, 0), PointOf(*shape.anchor, 4), 0, 0};
            drawing->isAnchorTurned = isTurned;
        }
        else if (group != nullptr && group->space && shape.place) {
            drawing->place = PlaceIn(*group->space, *shape.place, isTurned);
        }
        else {
            continue; // a shape without a place is not shown
        }
        drawings.push_back(std::move(*drawing));
    }
    return drawings;
}

std::optional<book::Drawing> SheetDrawings::Convert(const ArtShape& shape)
{
    const SheetObject* object = ObjectOf(shape);
    if (IsLeftOut(shape, object))
        return std::nullopt;
    book::Drawing drawing;
    ReadContent(shape, object, drawing);
    using enum book::DrawingKind;
    const bool hasFrame = drawing.kind == Shape || drawing.kind == Line;
    if (drawing.kind != Chart && drawing.kind != Control)
        ReadShapeLook(shape, source_.styles, hasFrame, drawing);
    if (hasFrame && shape.type == kFreeform)
        ReadOutline(shape, drawing);
    ReadText(shape, drawing);
    drawing.name = shape.properties.Text(ShapeProperty::Name);
    if (drawing.name.empty() && object != nullptr)
        drawing.name = UsualName(drawing, shape.type, object->id);
    return drawing;
}

bool SheetDrawings::IsLeftOut(const ArtShape& shape, const SheetObject* object) const
{
    if ((shape.flags & ArtShape::kDeleted) != 0 ||
        shape.properties.Flag(ShapeProperty::GroupFlags, kIsHidden, false))
        return true;
    return object != nullptr && (object->kind == ObjectKind::Note || object->isOwnControl);
}

void SheetDrawings::ReadContent(const ArtShape& shape, const SheetObject* object,
                                book::Drawing& drawing)
{
    using enum book::DrawingKind;
    const ObjectKind kind = object != nullptr ? object->kind : ObjectKind::Art;
    const std::uint32_t picture = shape.properties.Value(ShapeProperty::Picture, 0);
    if (shape.isGroup) {
        drawing.kind = Group;
        drawing.children = ConvertAll(shape.children, &shape);
    }
    else if (kind == ObjectKind::Chart) {
        ReadChartOf(*object, drawing);
    }
    else if (const auto control = ControlName(kind); !control.empty()) {
        drawing.kind = Control;
        drawing.description = control;
    }
    else if (picture != 0) {
        ReadPicture(shape, picture, drawing);
    }
    else if (kind == ObjectKind::Picture || shape.type == kPictureFrame ||
             shape.type == kHostControl) {
        drawing.kind = Placeholder;
        drawing.description = shape.type == kHostControl ? "control" : "object";
    }
    else {
        drawing.kind = IsLineType(shape.type) ? Line : Shape;
    }
}

void SheetDrawings::ReadPicture(const ArtShape& shape, std::uint32_t number, book::Drawing& drawing)
{
    const Pictures::Picture& picture = pictures_.Find(number);
    drawing.crop = CropOf(shape.properties);
    if (picture.bytes != nullptr) {
        drawing.kind = book::DrawingKind::Picture;
        drawing.picture = picture.bytes;
        drawing.pictureType = picture.type;
        return;
    }
    drawing.kind = book::DrawingKind::Placeholder;
    drawing.description = "picture";
    ++(picture.isTooLarge ? tooLarge_ : unreadable_);
}

void SheetDrawings::ReadChartOf(const SheetObject& object, book::Drawing& drawing)
{
    drawing.chart = ReadChart(source_, object.chart, charts_);
    if (drawing.chart != nullptr) {
        drawing.kind = book::DrawingKind::Chart;
        return;
    }
    drawing.kind = book::DrawingKind::Placeholder;
    drawing.description = "chart";
    ++badCharts_;
}

void SheetDrawings::ReadOutline(const ArtShape& shape, book::Drawing& drawing)
{
    if (shape.properties.Data(ShapeProperty::Vertices).empty())
        return;
    drawing.freeform = ReadFreeform(shape.properties, stepsLeft_);
    outlinesLeftOut_ += drawing.freeform == nullptr;
}

void SheetDrawings::ReadText(const ArtShape& shape, book::Drawing& drawing)
{
    const bool hadRoom = texts_.pieces > 0;
    if (IsArtTextType(shape.type) && drawing.kind == book::DrawingKind::Shape) {
        drawing.text = ArtTextOf(shape, source_.styles, texts_);
        drawing.fill.reset(); // the fill and the line are those of the letters
        drawing.outline.isVisible = false;
    }
    else if (shape.textAt) {
        const auto text = art_.texts.find(*shape.textAt);
        if (text != art_.texts.end())
            drawing.text = TextIn(shape, text->second, source_.styles, texts_);
        if (drawing.text && drawing.kind == book::DrawingKind::Control)
            drawing.text->left = drawing.text->right = drawing.text->top = drawing.text->bottom =
                kControlInset;
    }
    if (texts_.pieces == 0 && (drawing.text || !hadRoom) && shape.textAt)
        ++textsCut_;
}

const SheetObject* SheetDrawings::ObjectOf(const ArtShape& shape) const
{
    if (!shape.objectAt)
        return nullptr;
    const auto found = art_.objects.find(*shape.objectAt);
    return found != art_.objects.end() ? &found->second : nullptr;
}

void SheetDrawings::Count(std::string_view what, std::size_t count, std::string_view reason)
{
    if (count > 0)
        leftOut_.push_back(
            {std::string(what), {}, std::to_string(count) + ": " + std::string(reason)});
}

void SheetDrawings::Report()
{
    if (tree_.hasTooMany)
        leftOut_.push_back({"drawing", {}, "the sheet has more than 10,000 shapes"});
    if (tree_.isTooDeep)
        leftOut_.push_back({"drawing", {}, "they are nested more than 32 deep"});
    if (!tree_.isWhole && !tree_.hasTooMany)
        leftOut_.push_back({"drawing", {}, "the records of the drawings are damaged"});
    Count("picture", tooLarge_, "the workbook's pictures have more than 64 MiB");
    Count("picture", unreadable_, "they are damaged, or of a kind that is not known");
    Count("freeform", outlinesLeftOut_,
          "their outlines are damaged, have arcs, or too many points together");
    Count("chart", badCharts_, "their records are missing or damaged");
    Count("text", textsCut_, "the sheet's drawings have too many paragraphs");
}

} // namespace orrery::xls
