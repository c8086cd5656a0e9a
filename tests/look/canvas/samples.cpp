#include "look/canvas/samples.h"

#include "look/painter/borders.h"
#include "look/painter/cell_fills.h"
#include "look/painter/icons.h"
#include "look/painter/painter.h"
#include "look/shape/shape.h"
#include "look/text/font_tables.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace orrery::look {
namespace {

constexpr book::Color kRed{0xC0, 0x30, 0x20};
constexpr book::Color kBlue{0x1F, 0x4E, 0x79};
constexpr book::Color kPale{0xDD, 0xEB, 0xF7};

const FontTables kTables;

TextStyle StyleOf(const char* font, double size)
{
    TextStyle style;
    style.font.name = font;
    style.font.size = size;
    return style;
}

void Write(Canvas& canvas, Point at, const std::string& text, const TextStyle& style)
{
    canvas.DrawText(at, text, style, kTables.Width(text, style.font));
}

/// All patterns, gradients in four directions and from the middle, opacity.
void DrawFills(Canvas& canvas)
{
    for (int i = 1; i <= 18; ++i) {
        const auto pattern = static_cast<book::FillPattern>(i);
        canvas.FillBox({10.0 + (i - 1) % 9 * 50, 10.0 + (i - 1) / 9 * 50, 40, 40},
                       {{pattern, kBlue, kPale, {}}, 1});
    }
    for (int i = 0; i < 5; ++i) {
        book::Gradient gradient;
        gradient.degree = 45 * i;
        gradient.stops = {{0, kRed}, {0.5, book::kWhite}, {1, kBlue}};
        if (i == 4) {
            gradient.isPath = true;
            gradient.left = gradient.right = 0.25;
            gradient.top = gradient.bottom = 0.5;
        }
        canvas.FillBox({10.0 + i * 90, 120, 80, 60}, {{{}, {}, {}, gradient}, i == 1 ? 0.5 : 1});
    }
}

/// A box in each line style, and both diagonals.
void DrawBorders(Canvas& canvas)
{
    Layout layout;
    layout.width = 480;
    layout.height = 200;
    for (int i = 1; i <= 13; ++i) {
        CellBox cell;
        cell.box = {15.0 + (i - 1) % 5 * 95, 15.0 + (i - 1) / 5 * 60, 70, 40};
        const book::BorderLine line{static_cast<book::LineStyle>(i), i % 2 ? kBlue : kRed};
        cell.border = {line, line, line, line, {book::LineStyle::Thin, {}}, i == 1, i == 2};
        layout.cells.push_back(cell);
    }
    PaintBorders(layout, {0, 0, 480, 200}, canvas);
}

/// Fonts, styles, blanks, directions, turned and cut texts.
void DrawTexts(Canvas& canvas)
{
    double y = 25;
    for (const char* font : {"Calibri", "Cambria", "Arial", "Times New Roman", "Courier New"}) {
        auto style = StyleOf(font, 12);
        Write(canvas, {10, y}, "December 31, AVATAR ", style);
        style.font.bold = true;
        Write(canvas, {200, y}, "Bold 12", style);
        style.font.italic = true;
        style.color = kRed;
        Write(canvas, {300, y}, "Both  <&>", style);
        y += 25;
    }
    auto hebrew = StyleOf("Arial", 14);
    hebrew.isRightToLeft = true; // "January" and "Sunday"
    canvas.BeginGroup("C6", "");
    Write(canvas, {10, y}, "\xD7\x99\xD7\xA0\xD7\x95\xD7\x90\xD7\xA8", hebrew);
    canvas.EndGroup();
    Write(canvas, {110, y}, "\xD7\x99\xD7\x95\xD7\x9D \xD7\xA8\xD7\x90\xD7\xA9\xD7\x95\xD7\x9F",
          hebrew);
    canvas.Rotate({260, y}, -30);
    Write(canvas, {260, y}, "turned", StyleOf("Calibri", 14));
    canvas.Restore();
    canvas.Clip({340, y - 20, 40, 30});
    Write(canvas, {340, y}, "cut off here", StyleOf("Calibri", 14));
    canvas.Restore();
}

std::string ReadAll(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Each kind of picture, whole, cut, mirrored and turned.
void DrawPictures(Canvas& canvas, const std::filesystem::path& folder)
{
    double y = 10;
    for (const char* type : {"png", "jpeg", "gif", "bmp"}) {
        const std::string bytes = ReadAll(folder / (std::string("sample.") + type));
        canvas.DrawPicture({10, y, 60, 40}, {bytes, type, {0, 0, 1, 1}});
        canvas.DrawPicture({90, y, 60, 40}, {bytes, type, {0.5, 0.25, 0.5, 0.5}});
        canvas.Flip({170, y, 60, 40}, true, false);
        canvas.DrawPicture({170, y, 60, 40}, {bytes, type, {0, 0, 1, 1}});
        canvas.Restore();
        canvas.Rotate({280, y + 20}, 30);
        canvas.DrawPicture({250, y, 60, 40}, {bytes, type, {0, 0, 1, 1}});
        canvas.Restore();
        canvas.Place({340, y}, 0.75);
        canvas.DrawPicture({0, 0, 60, 40}, {bytes, type, {0, 0, 1, 1}});
        canvas.Restore();
        y += 48;
    }
}

void DrawShapes(Canvas& canvas)
{
    double x = 10;
    for (const char* name : {"roundRect", "ellipse", "star5", "rightArrow", "heart", "donut",
                             "cloud", "can", "wedgeRoundRectCallout"}) {
        for (const auto& part : MakeShape(name, {x, 10, 42, 40}, {}).parts)
            canvas.DrawPath(part.path, Brush{{book::FillPattern::Solid, kPale, {}, {}}, 1},
                            Pen{kBlue, 1.5, {}, 1});
        x += 52;
    }
    double y = 70;
    for (const char* set :
         {"3Arrows", "3Flags", "3TrafficLights2", "3Signs", "3Symbols", "3Symbols2", "3Stars",
          "3Triangles", "4RedToBlack", "5Arrows", "5Rating", "5Quarters", "5Boxes"}) {
        for (int i = 0; i < 5; ++i)
            PaintIcon({set, i}, {x - 468 + 20 * i, y, 16, 16}, canvas);
        x += y > 150 ? 120 : 0;
        y = y > 150 ? 70 : y + 22;
    }
}

CellBox MakeCell(std::int32_t row, std::int32_t column, const std::string& text, book::Font font)
{
    CellBox cell;
    cell.range = {{row, column}, {row, column}};
    cell.box = {10.3 + 66.4 * (column - 1), 10 + 30.5 * (row - 1), 66.4, 30.5};
    cell.clip = cell.box;
    TextPiece piece;
    piece.text = text;
    piece.font = font;
    piece.width = kTables.Width(text, font);
    TextLine line;
    line.width = piece.width;
    line.x = cell.box.Right() - 4 - line.width;
    line.baseline = cell.box.Bottom() - 8;
    line.pieces = {piece};
    cell.lines = {line};
    return cell;
}

/// A month with a grid, as a sheet has it.
void DrawMonth(Canvas& canvas)
{
    Layout layout;
    layout.range = {{1, 1}, {6, 7}};
    for (int i = 0; i <= 7; ++i)
        layout.columns.push_back(10.3 + 66.4 * i);
    for (int i = 0; i <= 6; ++i)
        layout.rows.push_back(10 + 30.5 * i);
    layout.width = 480;
    layout.height = 200;
    layout.showsGridLines = true;
    book::Font font;
    font.size = 14;
    for (int day = 1; day <= 31; ++day) {
        const int place = day + 2;
        auto cell = MakeCell(2 + place / 7, 1 + place % 7, std::to_string(day), font);
        cell.border.bottom = {book::LineStyle::Thin, kBlue};
        if (place % 7 >= 5)
            cell.display.style.Edit().fill = {book::FillPattern::Solid, kPale, {}, {}};
        if (day == 15)
            cell.lines[0].pieces[0].font.underline = book::Underline::Double;
        if (day == 24)
            cell.display.bar = BarDisplay{0, 0.6, kRed, kRed, true, false, {}, {}};
        layout.cells.push_back(cell);
    }
    PaintSheet(layout, canvas, kTables);
}

} // namespace

std::vector<Sample> Samples(const std::filesystem::path& folder)
{
    return {{"fills", DrawFills},
            {"borders", DrawBorders},
            {"texts", DrawTexts},
            {"pictures", [folder](Canvas& canvas) { DrawPictures(canvas, folder); }},
            {"shapes", DrawShapes},
            {"month", DrawMonth}};
}

} // namespace orrery::look
