#include "engines/builtin/xlsx/look/drawing/controls.h"

#include "engines/builtin/xlsx/look/drawing/header_pictures.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/understood.h"
#include "engines/builtin/xml/reading.h"
#include "util/fixed_text.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orrery::xlsx::drawing {
namespace {

constexpr std::size_t kMaxControlNodes = 1000000;

struct ControlName {
    util::FixedText<15> type;
    util::FixedText<15> description;
};

/// ECMA-376-4 19.7.2.12 (ST_ObjectType)
constexpr std::array<ControlName, 11> kControls{{
    {"Button", "button"},
    {"Checkbox", "check box"},
    {"Dialog", "dialog"},
    {"Drop", "drop-down list"},
    {"Edit", "text box"},
    {"GBox", "group box"},
    {"Label", "label"},
    {"List", "list box"},
    {"Radio", "option button"},
    {"Scroll", "scroll bar"},
    {"Spin", "spin button"},
}};

std::string_view DescriptionOf(std::string_view type)
{
    const auto* const found =
        std::find_if(kControls.begin(), kControls.end(),
                     [&](const ControlName& control) { return control.type == type; });
    return found == kControls.end() ? "control" : std::string_view(found->description);
}

/// "left column, its offset in pixels, top row, offset, right column ...", ECMA-376-4 19.4.2.1
std::optional<book::Anchor> AnchorOfControl(const std::string& text)
{
    std::array<std::int32_t, 8> numbers{};
    const auto pieces = util::Split(text, ',');
    if (pieces.size() != numbers.size())
        return std::nullopt;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::string piece = pieces[i];
        std::erase_if(piece, [](char character) { return character <= ' ' && character >= 0; });
        const auto number = util::ReadNumber(piece);
        if (!number || !(*number >= 0) || *number > 1048575)
            return std::nullopt;
        numbers[i] = static_cast<std::int32_t>(*number);
    }
    const auto point = [&](std::size_t at) {
        book::AnchorPoint result;
        result.cell = {numbers[at + 2] + 1, std::min(numbers[at] + 1, 16384)};
        result.emuX = std::int64_t{numbers[at + 1]} * static_cast<std::int64_t>(book::kEmuPerPixel);
        result.emuY = std::int64_t{numbers[at + 3]} * static_cast<std::int64_t>(book::kEmuPerPixel);
        return result;
    };
    return book::Anchor{point(0), point(4), 0, 0};
}

bool IsHidden(const xml::Element& shape)
{
    std::string style = shape.Attribute("style");
    std::erase_if(style, [](char character) { return character <= ' ' && character >= 0; });
    return style.find("visibility:hidden") != style.npos;
}

/// The first "font" below an element; the texts of controls have one.
xml::Element FontBelow(const xml::Element& element)
{
    for (const xml::Element child : element) {
        if (child.Name() == "font")
            return child;
        if (const xml::Element found = FontBelow(child))
            return found;
    }
    return {};
}

std::string OneLine(const std::string& text)
{
    std::string line;
    for (const char character : text) {
        const bool isBlank = character <= ' ' && character >= 0;
        if (!isBlank)
            line += character;
        else if (!line.empty() && line.back() != ' ')
            line += ' ';
    }
    return std::string(util::Trim(line));
}

std::optional<book::TextBody> TextOfControl(const xml::Element& shape, const xml::Element& data)
{
    const xml::Element box = shape.Child("textbox");
    const std::string text = OneLine(box.Text());
    if (text.empty())
        return std::nullopt;
    book::ParagraphRun run{text, {}};
    const xml::Element font = FontBelow(box);
    if (const std::string name = font.Attribute("face"); !name.empty())
        run.font.name = name;
    if (const auto size = NumberOf(font, "size", 20, 8000)) // twentieths of a point
        run.font.size = *size / 20;
    book::TextBody body;
    body.left = body.right = body.top = body.bottom = 1.5;
    body.vertical = book::VerticalAlignment::Center;
    const bool isCentered = data.Child("TextHAlign").Text() == "Center";
    body.paragraphs.push_back(
        {{std::move(run)},
         isCentered ? book::HorizontalAlignment::Center : book::HorizontalAlignment::Left});
    return body;
}

std::optional<book::Drawing> ReadControl(const xml::Element& shape, const std::string& part,
                                         Pictures& pictures)
{
    const xml::Element data = shape.Child("ClientData");
    const std::string type = data.Attribute("ObjectType");
    auto anchor = AnchorOfControl(data.Child("Anchor").Text());
    if (type == "Note" || !anchor || IsHidden(shape))
        return std::nullopt;
    book::Drawing drawing;
    drawing.name = shape.Attribute("id");
    drawing.anchor = *anchor;
    const std::string picture = shape.Child("imagedata").Prefixed("relid");
    if (!picture.empty() && pictures.Load(part, picture, drawing)) {
        drawing.kind = book::DrawingKind::Picture;
        drawing.outline.isVisible = false;
        return drawing;
    }
    drawing.kind = book::DrawingKind::Control;
    drawing.description = type == "Pict" ? "object" : DescriptionOf(type);
    drawing.text = TextOfControl(shape, data);
    return drawing;
}

} // namespace

void ReadControls(const Package& package, const std::string& part, Pictures& pictures,
                  ShapeBudget& budget, book::SheetLook& look)
{
    const PartText text = package.ReadXml(part);
    xml::Scanner scanner(*text, part);
    xml::EnterRoot(scanner);
    xml::ForEachChild(scanner, [&] {
        const std::string_view name = scanner.LocalName();
        if (name == "shapetype" || name == "shapelayout")
            return scanner.SkipElement();
        if (budget.shapes >= ShapeBudget::kMaxShapes) {
            ++budget.tooMany;
            return scanner.SkipElement();
        }
        const xml::Tree tree(scanner, UnderstandsDrawing, kMaxControlNodes);
        if (IsHeaderPicture(tree.Root())) {
            auto picture = ReadHeaderPicture(tree.Root(), part, pictures);
            if (picture && look.headerPictures.size() < book::HeaderPicture::kMost)
                look.headerPictures.push_back(std::move(*picture));
        }
        else if (auto drawing = ReadControl(tree.Root(), part, pictures)) {
            ++budget.shapes;
            look.drawings.push_back(std::move(*drawing));
        }
    });
}

} // namespace orrery::xlsx::drawing
