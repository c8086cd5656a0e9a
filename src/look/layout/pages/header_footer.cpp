#include "look/layout/pages/header_footer.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>

namespace orrery::look {
namespace {

constexpr std::size_t kLongest = 4096; ///< bytes; Excel allows 255 characters
constexpr std::size_t kMostLines = 64;
/// What fields put into a text; more is no header.
constexpr std::size_t kLongestResult = 65'536;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

int HexDigit(char c)
{
    if (IsDigit(c))
        return c - '0';
    const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

class Parser {
public:
    Parser(std::string_view text, const book::Font& font, const PageFields& fields)
        : text_(text.substr(0, kLongest)), normal_(font), font_(font), fields_(fields)
    {
    }

    HeaderText Parse()
    {
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '&' && at_ < text_.size())
                ReadCode();
            else if (c == '\n')
                EndLine();
            else if (c != '\r')
                Add({&c, 1});
        }
        EndPart();
        return std::move(header_);
    }

private:
    void ReadCode()
    {
        const char code = text_[at_++];
        switch (code) {
        case 'L':
            return Begin(0);
        case 'C':
            return Begin(1);
        case 'R':
            return Begin(2);
        case '&':
            return Add("&");
        case '"':
            return ReadFont();
        case 'K':
            return ReadColor();
        case 'G':
            return line_.push_back({{}, font_, true});
        default:
            if (IsDigit(code))
                ReadSize();
            else if (!SetStyle(code))
                AddField(code);
        }
    }

    void Begin(std::size_t part)
    {
        EndPart();
        part_ = part;
        font_ = normal_;
    }

    void EndLine()
    {
        if (lines_.size() < kMostLines)
            lines_.push_back(std::move(line_));
        line_.clear();
    }

    void EndPart()
    {
        if (!line_.empty() || !lines_.empty())
            EndLine();
        auto& part = header_.parts[part_];
        part.insert(part.end(), lines_.begin(), lines_.end());
        lines_.clear();
    }

    void Add(std::string_view text)
    {
        if (text.size() > kLongestResult - used_)
            return;
        used_ += text.size();
        if (line_.empty() || line_.back().font != font_ || line_.back().isPicture)
            line_.push_back({{}, font_});
        line_.back().text += text;
    }

    /// "&"name,style"": "-" is the font as it is.
    void ReadFont()
    {
        const std::size_t end = std::min(text_.find('"', at_), text_.size());
        const std::string_view value = text_.substr(at_, end - at_);
        at_ = std::min(end + 1, text_.size());
        const std::size_t comma = std::min(value.find(','), value.size());
        if (const std::string_view name = value.substr(0, comma); !name.empty() && name != "-")
            font_.name = std::string(name);
        const std::string_view style = comma < value.size() ? value.substr(comma + 1) : "";
        font_.bold = style.find("Bold") != std::string_view::npos;
        font_.italic = style.find("Italic") != std::string_view::npos;
    }

    void ReadSize()
    {
        const std::size_t begin = --at_;
        while (at_ < text_.size() && IsDigit(text_[at_]) && at_ - begin < 3)
            ++at_;
        int size = 0;
        std::from_chars(text_.data() + begin, text_.data() + at_, size);
        if (size >= 1 && size <= 409)
            font_.size = size;
    }

    /// Six hexadecimal digits; a colour of the theme ("01+000") is not known here and stays black.
    void ReadColor()
    {
        if (text_.size() - at_ < 6)
            return;
        const std::string_view digits = text_.substr(at_, 6);
        at_ += 6;
        if (!std::all_of(digits.begin(), digits.end(), [](char c) { return HexDigit(c) >= 0; })) {
            font_.color.reset();
            return;
        }
        const auto byte = [&digits](std::size_t i) {
            return static_cast<std::uint8_t>(HexDigit(digits[i]) * 16 + HexDigit(digits[i + 1]));
        };
        font_.color = book::Color{byte(0), byte(2), byte(4)};
    }

    /// Codes that turn something on, and off again.
    bool SetStyle(char code)
    {
        const auto toggle = [](auto& value, auto on) { value = value == on ? decltype(on){} : on; };
        switch (code) {
        case 'B':
            font_.bold = !font_.bold;
            return true;
        case 'I':
            font_.italic = !font_.italic;
            return true;
        case 'S':
            font_.strike = !font_.strike;
            return true;
        case 'U':
            toggle(font_.underline, book::Underline::Single);
            return true;
        case 'E':
            toggle(font_.underline, book::Underline::Double);
            return true;
        case 'X':
            toggle(font_.position, book::TextPosition::Superscript);
            return true;
        case 'Y':
            toggle(font_.position, book::TextPosition::Subscript);
            return true;
        default:
            return false;
        }
    }

    void AddField(char code)
    {
        switch (code) {
        case 'P':
            return Add(std::to_string(fields_.page + ReadOffset()));
        case 'N':
            return Add(std::to_string(fields_.pages));
        case 'D':
            return Add(fields_.date);
        case 'T':
            return Add(fields_.time);
        case 'F':
            return Add(fields_.fileName);
        case 'Z':
            return Add(fields_.folder);
        case 'A':
            return Add(fields_.sheetName);
        default:
            return;
        }
    }

    /// "&P+2" and "&P-1": a number that is added to the page's.
    std::int32_t ReadOffset()
    {
        if (at_ + 1 >= text_.size() || (text_[at_] != '+' && text_[at_] != '-') ||
            !IsDigit(text_[at_ + 1]))
            return 0;
        const bool isMinus = text_[at_] == '-';
        const std::size_t begin = ++at_;
        while (at_ < text_.size() && IsDigit(text_[at_]) && at_ - begin < 6)
            ++at_;
        std::int32_t offset = 0;
        std::from_chars(text_.data() + begin, text_.data() + at_, offset);
        return isMinus ? -offset : offset;
    }

    std::string_view text_;
    const book::Font& normal_;
    book::Font font_;
    const PageFields& fields_;
    std::size_t at_ = 0;
    std::size_t part_ = 1;
    std::size_t used_ = 0;
    std::vector<HeaderLine> lines_;
    HeaderLine line_;
    HeaderText header_;
};

/// A line that begins at 0, and how high it is; an empty line is as high as the one before it.
struct MeasuredLine {
    TextLine line;
    LineMetrics metrics;
    std::optional<Box> picture; ///< its foot is at 0, on the line
};

/// Puts a picture behind what the line has, unless its size is none.
void AddPicture(const book::HeaderPicture& picture, double scale, MeasuredLine& measured)
{
    constexpr double kMostPoints = 10'000;
    const auto pixels = [scale](double points) { return points * kPixelsPerPoint * scale; };
    if (!(picture.width > 0 && picture.width < kMostPoints && picture.height > 0 &&
          picture.height < kMostPoints))
        return;
    const double height = pixels(picture.height);
    measured.picture = Box{measured.line.width, -height, pixels(picture.width), height};
    measured.line.width += measured.picture->width;
}

/// `picture` is nullptr if there is none for the line.
MeasuredLine Measure(const HeaderLine& pieces, const LineMetrics& before,
                     const book::HeaderPicture* picture, double scale, const TextMeasure& measure)
{
    MeasuredLine measured;
    for (const HeaderPiece& piece : pieces) {
        if (piece.isPicture) {
            if (picture != nullptr && !measured.picture)
                AddPicture(*picture, scale, measured);
            continue;
        }
        book::Font font = piece.font;
        font.size *= scale;
        TextPiece text{piece.text, font, font.color, measured.line.width, 0};
        text.width = measure.Width(piece.text, font);
        measured.line.width += text.width;
        const LineMetrics metrics = measure.Metrics(font);
        measured.metrics.ascent = std::max(measured.metrics.ascent, metrics.ascent);
        measured.metrics.height = std::max(measured.metrics.height, metrics.height);
        measured.line.pieces.push_back(std::move(text));
    }
    if (measured.line.pieces.empty() && !measured.picture)
        measured.metrics = before;
    if (measured.picture && measured.picture->height > measured.metrics.ascent) {
        measured.metrics.height += measured.picture->height - measured.metrics.ascent;
        measured.metrics.ascent = measured.picture->height;
    }
    return measured;
}

} // namespace

HeaderText ParseHeader(std::string_view text, const book::Font& font, const PageFields& fields)
{
    return Parser(text, font, fields).Parse();
}

void PlaceHeader(const HeaderText& header, const HeaderPlace& place, const TextMeasure& measure,
                 PageBox& page)
{
    for (std::size_t part = 0; part < header.parts.size(); ++part) {
        std::vector<MeasuredLine> measured;
        double height = 0;
        LineMetrics before;
        const book::HeaderPicture* picture = place.pictures[part];
        for (const HeaderLine& line : header.parts[part]) {
            measured.push_back(Measure(line, before, picture, place.scale, measure));
            if (measured.back().picture)
                picture = nullptr;
            before = measured.back().metrics;
            height += before.height;
        }
        double y = place.isFooter ? place.y - height : place.y;
        for (MeasuredLine& each : measured) {
            const double slack = place.right - place.left - each.line.width;
            each.line.x = place.left + slack * static_cast<double>(part) / 2;
            each.line.baseline = y + each.metrics.ascent;
            y += each.metrics.height;
            if (each.picture) {
                each.picture->x += each.line.x;
                each.picture->y += each.line.baseline;
                page.headerPictures.push_back({&place.pictures[part]->drawing, *each.picture});
            }
            if (!each.line.pieces.empty())
                page.headerAndFooter.push_back(std::move(each.line));
        }
    }
}

} // namespace orrery::look
