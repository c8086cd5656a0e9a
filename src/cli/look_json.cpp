#include "cli/look_json.h"

#include "book/cell_address.h"
#include "look/display/style_layers.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orrery::cli {
namespace {

using look::Box;
using look::CellBox;

std::string ColorText(book::Color color)
{
    constexpr std::string_view hex = "0123456789abcdef";
    std::string text = "#";
    for (const std::uint8_t part : {color.red, color.green, color.blue})
        text += {hex[part / 16], hex[part % 16]};
    return text;
}

const char* HorizontalText(book::HorizontalAlignment alignment)
{
    switch (alignment) {
    case book::HorizontalAlignment::General:
        return "general";
    case book::HorizontalAlignment::Left:
        return "left";
    case book::HorizontalAlignment::Center:
        return "center";
    case book::HorizontalAlignment::Right:
        return "right";
    case book::HorizontalAlignment::Fill:
        return "fill";
    case book::HorizontalAlignment::Justify:
        return "justify";
    case book::HorizontalAlignment::CenterContinuous:
        return "centerContinuous";
    case book::HorizontalAlignment::Distributed:
        return "distributed";
    }
    return "";
}

const char* VerticalText(book::VerticalAlignment alignment)
{
    switch (alignment) {
    case book::VerticalAlignment::Top:
        return "top";
    case book::VerticalAlignment::Center:
        return "center";
    case book::VerticalAlignment::Bottom:
        return "bottom";
    case book::VerticalAlignment::Justify:
        return "justify";
    case book::VerticalAlignment::Distributed:
        return "distributed";
    }
    return "";
}

const char* KindText(book::DrawingKind kind)
{
    switch (kind) {
    case book::DrawingKind::Picture:
        return "picture";
    case book::DrawingKind::Shape:
        return "shape";
    case book::DrawingKind::Line:
        return "line";
    case book::DrawingKind::Group:
        return "group";
    case book::DrawingKind::Chart:
        return "chart";
    case book::DrawingKind::Control:
        return "control";
    case book::DrawingKind::Placeholder:
        return "placeholder";
    }
    return "";
}

void WriteBox(JsonWriter& json, const Box& box)
{
    json.BeginArray()
        .Decimal(box.x)
        .Decimal(box.y)
        .Decimal(box.width)
        .Decimal(box.height)
        .EndArray();
}

void WriteEdges(JsonWriter& json, const std::vector<double>& edges)
{
    json.BeginArray();
    for (const double edge : edges)
        json.Decimal(edge);
    json.EndArray();
}

void WriteCell(JsonWriter& json, const CellBox& cell)
{
    const look::CellDisplay& display = cell.display;
    const book::Font& font = display.style->font;
    const auto fill = look::MeanColor(display.style->fill);
    json.BeginObject().Key("cell").Text(book::FormatCellAddress(cell.range.first)).Key("box");
    WriteBox(json, cell.box);
    json.Key("clip");
    WriteBox(json, cell.clip);
    json.Key("text").Text(display.text).Key("fill");
    if (fill)
        json.Text(ColorText(*fill));
    else
        json.Null();
    json.Key("color").Text(ColorText(look::TextColor(display)));
    json.Key("font").Text(font.name).Key("size").Decimal(font.size);
    json.Key("bold").Boolean(font.bold).Key("italic").Boolean(font.italic);
    json.Key("align").Text(HorizontalText(display.horizontal));
    json.Key("valign").Text(VerticalText(display.style->alignment.vertical));
    json.Key("wrap").Boolean(display.style->alignment.wrap).EndObject();
}

void WriteDrawings(JsonWriter& json, const std::vector<look::DrawingBox>& drawings)
{
    json.BeginArray();
    for (const look::DrawingBox& drawing : drawings) {
        json.BeginObject().Key("kind").Text(KindText(drawing.drawing->kind)).Key("box");
        WriteBox(json, drawing.box);
        json.Key("name").Text(drawing.drawing->name).EndObject();
    }
    json.EndArray();
}

void WriteLeftOut(JsonWriter& json, const std::vector<book::LeftOut>& leftOut)
{
    json.BeginArray();
    for (const book::LeftOut& left : leftOut) {
        json.BeginObject().Key("what").Text(left.what).Key("where").Text(left.where);
        json.Key("reason").Text(left.reason).EndObject();
    }
    json.EndArray();
}

} // namespace

JsonWriter LookJson(const look::SheetPicture& picture, const std::vector<std::string>& warnings)
{
    const look::Layout& layout = picture.Layout();
    JsonWriter json;
    json.BeginObject().Key("sheet").Text(picture.Name());
    json.Key("range").Text(book::FormatCellRange(layout.range));
    json.Key("width").Decimal(layout.width).Key("height").Decimal(layout.height).Key("columns");
    WriteEdges(json, layout.columns);
    json.Key("rows");
    WriteEdges(json, layout.rows);
    json.Key("cells").BeginArray();
    for (const CellBox& cell : layout.cells)
        WriteCell(json, cell);
    json.EndArray().Key("drawings");
    WriteDrawings(json, layout.drawings);
    json.Key("pages").BeginArray();
    for (const look::PageBox& page : layout.pages)
        WriteBox(json, page.area);
    json.EndArray().Key("notComputed").BeginArray();
    for (const book::CellAddress cell : picture.NotComputed())
        json.Text(book::FormatCellAddress(cell));
    json.EndArray().Key("leftOut");
    WriteLeftOut(json, layout.leftOut);
    if (!warnings.empty())
        json.Key("warnings").Texts(warnings);
    json.EndObject();
    return json;
}

} // namespace orrery::cli
