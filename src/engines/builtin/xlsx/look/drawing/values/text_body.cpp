#include "engines/builtin/xlsx/look/drawing/values/text_body.h"

#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/fills.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orrery::xlsx::drawing {
namespace {

using book::HorizontalAlignment;
using book::VerticalAlignment;

constexpr std::size_t kMaxRuns = 5000;
constexpr std::size_t kMaxText = 262144;
constexpr double kPointsPerEmu = 1.0 / 12700;
constexpr double kDefaultSize = 18; // ECMA-376 21.1.2.3.9: of texts that say nothing

book::Underline UnderlineOf(const std::string& name)
{
    if (name == "none")
        return book::Underline::None;
    return name == "dbl" || name == "wavyDbl" ? book::Underline::Double : book::Underline::Single;
}

void ReadTypeface(const xml::Element& properties, const builtin::ThemeColors& theme,
                  book::Font& font)
{
    std::string name = properties.Child("latin").Attribute("typeface");
    if (const std::string* scheme = theme.FontOf(name))
        name = *scheme;
    if (name.empty() || name.starts_with('+'))
        name = properties.Child("ea").Attribute("typeface");
    if (!name.empty() && !name.starts_with('+'))
        font.name = name;
}

HorizontalAlignment AlignmentOf(const xml::Element& properties, HorizontalAlignment otherwise)
{
    const std::string name = properties.Attribute("algn");
    if (name.empty())
        return FlagOf(properties, "rtl", false) ? HorizontalAlignment::Right : otherwise;
    if (name == "ctr")
        return HorizontalAlignment::Center;
    if (name == "r")
        return HorizontalAlignment::Right;
    if (name == "dist" || name == "thaiDist")
        return HorizontalAlignment::Distributed;
    return name.starts_with("just") ? HorizontalAlignment::Justify : HorizontalAlignment::Left;
}

VerticalAlignment VerticalOf(const xml::Element& body)
{
    const std::string anchor = body.Attribute("anchor");
    if (anchor == "ctr")
        return VerticalAlignment::Center;
    if (anchor == "b")
        return VerticalAlignment::Bottom;
    if (anchor == "just")
        return VerticalAlignment::Justify;
    return anchor == "dist" ? VerticalAlignment::Distributed : VerticalAlignment::Top;
}

/// Reads the paragraphs of one body.
class ParagraphReader {
public:
    ParagraphReader(const builtin::ThemeColors& theme, const book::Font& font,
                    const xml::Element& list)
        : colors_{theme, std::nullopt}, font_(font), list_(list)
    {
    }

    void Read(const xml::Element& element, book::TextBody& body)
    {
        const xml::Element properties = element.Child("pPr");
        const int level = static_cast<int>(NumberOf(properties, "lvl", 0, 8).value_or(0));
        const xml::Element ofLevel = list_.Child("lvl" + std::to_string(level + 1) + "pPr");
        book::Font font = ReadFont(list_.Child("defPPr").Child("defRPr"), font_, colors_);
        font = ReadFont(ofLevel.Child("defRPr"), font, colors_);
        book::Paragraph paragraph;
        paragraph.alignment =
            AlignmentOf(properties, AlignmentOf(ofLevel, HorizontalAlignment::Left));
        for (const xml::Element run : element)
            ReadRun(run, font, paragraph);
        if (paragraph.runs.empty()) // an empty line is as high as its end mark
            paragraph.runs.push_back({"", ReadFont(element.Child("endParaRPr"), font, colors_)});
        body.paragraphs.push_back(std::move(paragraph));
    }
    bool HasText() const { return length_ > 0; }
    bool IsFull() const { return length_ >= kMaxText || runs_ >= kMaxRuns; }

private:
    void ReadRun(const xml::Element& element, const book::Font& base, book::Paragraph& paragraph)
    {
        std::string text;
        if (element.Name() == "br")
            text = "\n";
        else if (element.Name() == "r" || element.Name() == "fld")
            text = element.Child("t").Text();
        if (text.empty() || IsFull())
            return;
        if (length_ + text.size() > kMaxText)
            return;
        length_ += text.size();
        ++runs_;
        paragraph.runs.push_back({std::move(text), ReadFont(element.Child("rPr"), base, colors_)});
    }

    ColorSource colors_;
    const book::Font& font_;
    xml::Element list_;
    std::size_t length_ = 0;
    std::size_t runs_ = 0;
};

void ReadBodyProperties(const xml::Element& element, book::TextBody& body)
{
    const auto inset = [&](const char* side, double otherwise) {
        if (!element.Has(side))
            return otherwise;
        return static_cast<double>(EmuOf(element, side, 0)) * kPointsPerEmu;
    };
    body.vertical = VerticalOf(element);
    body.wraps = element.Attribute("wrap") != "none";
    const std::string direction = element.Attribute("vert");
    if (direction == "vert270")
        body.rotation = 270;
    else if (!direction.empty() && direction != "horz")
        body.rotation = 90;
    body.left = inset("lIns", body.left);
    body.top = inset("tIns", body.top);
    body.right = inset("rIns", body.right);
    body.bottom = inset("bIns", body.bottom);
}

} // namespace

book::Font ReadFont(const xml::Element& properties, const book::Font& base,
                    const ColorSource& colors)
{
    book::Font font = base;
    if (!properties)
        return font;
    ReadTypeface(properties, colors.theme, font);
    if (const auto size = NumberOf(properties, "sz", 100, 400000))
        font.size = *size / 100;
    font.bold = FlagOf(properties, "b", base.bold);
    font.italic = FlagOf(properties, "i", base.italic);
    if (properties.Has("strike"))
        font.strike = properties.Attribute("strike") != "noStrike";
    if (properties.Has("u"))
        font.underline = UnderlineOf(properties.Attribute("u"));
    if (const auto baseline = ShareOf(properties, "baseline"))
        font.position = *baseline > 0   ? book::TextPosition::Superscript
                        : *baseline < 0 ? book::TextPosition::Subscript
                                        : book::TextPosition::Baseline;
    if (const auto color = MainColor(ReadFill(properties, colors)))
        font.color = color;
    return font;
}

std::optional<book::TextBody> ReadTextBody(const xml::Element& element,
                                           const xml::Element& fontReference,
                                           const builtin::ThemeColors& theme)
{
    if (!element)
        return std::nullopt;
    book::Font font;
    font.size = kDefaultSize;
    font.name = fontReference.Is("idx", "major") ? theme.majorFont : theme.minorFont;
    if (const auto color = ReadColor(fontReference, {theme, std::nullopt}))
        font.color = color->color;
    book::TextBody body;
    ReadBodyProperties(element.Child("bodyPr"), body);
    ParagraphReader reader(theme, font, element.Child("lstStyle"));
    for (const xml::Element child : element) {
        if (child.Name() == "p" && !reader.IsFull() && body.paragraphs.size() < kMaxRuns)
            reader.Read(child, body);
    }
    return reader.HasText() ? std::optional(std::move(body)) : std::nullopt;
}

std::string PlainText(const xml::Element& body)
{
    std::string text;
    bool isFirst = true;
    for (const xml::Element paragraph : body) {
        if (paragraph.Name() != "p" || text.size() >= kMaxText)
            continue;
        if (!isFirst)
            text += '\n';
        isFirst = false;
        for (const xml::Element run : paragraph) {
            if (run.Name() == "br")
                text += '\n';
            else if (run.Name() == "r" || run.Name() == "fld")
                text += run.Child("t").Text();
        }
    }
    return text;
}

} // namespace orrery::xlsx::drawing
