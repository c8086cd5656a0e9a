#include "engines/builtin/xls/look/drawing/shape_text.h"

#include "engines/builtin/xls/look/drawing/art_colors.h"
#include "util/unicode.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace orrery::xls {
namespace {

constexpr double kEmuPerPointOfText = 12700;

/// [MS-XLS] 2.4.329 (hAlignment)
book::HorizontalAlignment HorizontalOf(unsigned flags)
{
    using enum book::HorizontalAlignment;
    switch (flags >> 1 & 7U) {
    case 2:
        return Center;
    case 3:
        return Right;
    case 4:
        return Justify;
    case 7:
        return Distributed;
    default:
        return Left;
    }
}

/// [MS-XLS] 2.4.329 (vAlignment)
book::VerticalAlignment VerticalOf(unsigned flags)
{
    using enum book::VerticalAlignment;
    switch (flags >> 4 & 7U) {
    case 2:
        return Center;
    case 3:
        return Bottom;
    case 4:
        return Justify;
    case 7:
        return Distributed;
    default:
        return Top;
    }
}

/// [MS-XLS] 2.4.329 (rot)
std::int16_t DegreesOf(std::uint16_t rotation)
{
    constexpr std::uint16_t kLeft = 2;
    constexpr std::uint16_t kRight = 3;
    if (rotation == kLeft)
        return 270;
    return rotation == kRight ? 90 : 0;
}

void ReadInsets(const ShapeProperties& properties, book::TextBody& body)
{
    constexpr std::uint32_t kNoWrap = 2;
    const auto points = [&](ShapeProperty side, double usual) {
        const auto emu = properties.Find(side);
        return emu ? std::clamp(static_cast<std::int32_t>(*emu) / kEmuPerPointOfText, 0.0, 1584.0)
                   : usual;
    };
    body.left = points(ShapeProperty::TextLeft, body.left);
    body.top = points(ShapeProperty::TextTop, body.top);
    body.right = points(ShapeProperty::TextRight, body.right);
    body.bottom = points(ShapeProperty::TextBottom, body.bottom);
    body.wraps = properties.Value(ShapeProperty::WrapText, 0) != kNoWrap;
}

/// Collects runs into paragraphs, which end at line feeds.
class Paragraphs {
public:
    Paragraphs(book::HorizontalAlignment alignment, TextBudget& budget)
        : alignment_(alignment), budget_(budget)
    {
        Begin();
    }

    void Add(std::u16string_view text, const book::Font& font)
    {
        while (budget_.pieces > 0) {
            const std::size_t end = text.find(u'\n');
            std::u16string_view line = text.substr(0, end);
            if (line.ends_with(u'\r'))
                line.remove_suffix(1);
            if (!line.empty() || paragraphs_.back().runs.empty()) {
                paragraphs_.back().runs.push_back({util::FromUtf16(line), font});
                --budget_.pieces;
            }
            if (end == text.npos)
                return;
            text.remove_prefix(end + 1);
            Begin();
        }
    }
    std::vector<book::Paragraph> Take() { return std::move(paragraphs_); }

private:
    void Begin()
    {
        paragraphs_.emplace_back();
        paragraphs_.back().alignment = alignment_;
    }

    book::HorizontalAlignment alignment_;
    TextBudget& budget_;
    std::vector<book::Paragraph> paragraphs_;
};

} // namespace

std::optional<book::TextBody> TextIn(const ArtShape& shape, const ObjectText& text,
                                     const DrawingStyles& styles, TextBudget& budget)
{
    const std::u16string_view all = text.text;
    if (all.empty())
        return std::nullopt;
    book::TextBody body;
    ReadInsets(shape.properties, body);
    body.vertical = VerticalOf(text.flags);
    body.rotation = DegreesOf(text.rotation);
    Paragraphs paragraphs(HorizontalOf(text.flags), budget);
    std::size_t begin = 0;
    std::size_t font = 0;
    const auto addUpTo = [&](std::size_t end) {
        if (end > begin)
            paragraphs.Add(all.substr(begin, end - begin), styles.font(font));
        begin = std::max(begin, end);
    };
    for (const ObjectText::Run& run : text.runs) {
        if (run.begin < begin || run.begin >= all.size())
            continue;
        addUpTo(run.begin);
        font = run.font;
    }
    addUpTo(all.size());
    body.paragraphs = paragraphs.Take();
    return body;
}

std::optional<book::TextBody> ArtTextOf(const ArtShape& shape, const DrawingStyles& styles,
                                        TextBudget& budget)
{
    constexpr unsigned kIsItalic = 4; // bits of [MS-ODRAW] 2.3.22.11
    constexpr unsigned kIsBold = 5;
    constexpr double kUsualSize = 36;
    const ShapeProperties& properties = shape.properties;
    const std::string text = properties.Text(ShapeProperty::ArtText);
    if (text.empty())
        return std::nullopt;
    book::Font font;
    if (auto name = properties.Text(ShapeProperty::ArtTextFont); !name.empty())
        font.name = std::move(name);
    font.size = std::clamp(properties.Fixed(ShapeProperty::ArtTextSize, kUsualSize), 1.0, 409.0);
    font.bold = properties.Flag(ShapeProperty::ArtTextFlags, kIsBold, false);
    font.italic = properties.Flag(ShapeProperty::ArtTextFlags, kIsItalic, false);
    font.color = ArtColors(properties, styles).Find(ShapeProperty::FillColor, book::kWhite);
    Paragraphs paragraphs(book::HorizontalAlignment::Center, budget);
    paragraphs.Add(util::ToUtf16(text), font);
    book::TextBody body;
    body.paragraphs = paragraphs.Take();
    body.vertical = book::VerticalAlignment::Center;
    body.wraps = false;
    return body;
}

} // namespace orrery::xls
