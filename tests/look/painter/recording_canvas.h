#pragma once

#include "look/canvas/canvas.h"
#include "look/text/text_measure.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace orrery::look {

/// Writes down what is drawn, one line for each call: "line 0.5 9.5 20.5 9.5 #000000 1".
class RecordingCanvas : public Canvas {
public:
    void FillBox(const Box& box, const Brush& brush) override
    {
        Note("fill" + Text(box) + " " + Text(brush));
    }
    void DrawLine(Point from, Point to, const Pen& pen) override
    {
        Note("line" + Text(from) + Text(to) + " " + Text(pen));
    }
    void DrawPath(const Path& path, const std::optional<Brush>& fill,
                  const std::optional<Pen>& pen) override
    {
        std::string line = "path";
        for (const auto& step : path) {
            if (step.kind != PathStep::Kind::Close)
                line += Text(step.point);
        }
        Note(line + (fill ? " in " + Text(*fill) : "") + (pen ? " with " + Text(*pen) : ""));
    }
    void DrawText(Point at, std::string_view text, const TextStyle& style, double) override
    {
        Note("text" + Text(at) + " " + std::string(text) + " " + Text(style.color) + " " +
             Text(style.font.size));
    }
    bool DrawPicture(const Box& box, const PictureSource& picture) override
    {
        if (picture.type == "emf")
            return false;
        Note("picture" + Text(box) + " " + picture.type + Text(picture.shown));
        return true;
    }
    void Clip(const Box& box) override { Note("clip" + Text(box)); }
    void Rotate(Point around, double degrees) override
    {
        Note("rotate" + Text(around) + " " + Text(degrees));
    }
    void Flip(const Box& box, bool horizontally, bool vertically) override
    {
        Note("flip" + Text(box) + (horizontally ? " h" : "") + (vertically ? " v" : ""));
    }
    void Place(Point origin, double scale) override
    {
        Note("place" + Text(origin) + " " + Text(scale));
    }
    void Restore() override { Note("restore"); }
    void BeginGroup(std::string_view id, std::string_view title) override
    {
        Note("group " + std::string(id) + (title.empty() ? "" : ": " + std::string(title)));
    }
    void EndGroup() override { Note("end"); }

    /// Where a line stands that begins so, or -1.
    int Find(const std::string& begin) const
    {
        const auto found = std::find_if(lines.begin(), lines.end(), [&begin](const auto& line) {
            return line.compare(0, begin.size(), begin) == 0;
        });
        return found == lines.end() ? -1 : static_cast<int>(found - lines.begin());
    }
    /// The lines that begin so.
    std::vector<std::string> All(const std::string& begin) const
    {
        std::vector<std::string> all;
        for (const auto& line : lines) {
            if (line.compare(0, begin.size(), begin) == 0)
                all.push_back(line);
        }
        return all;
    }

    std::vector<std::string> lines;

private:
    void Note(std::string line) { lines.push_back(std::move(line)); }
    static std::string Text(double number)
    {
        char text[40];
        std::snprintf(text, sizeof text, "%.10g", number);
        return text;
    }
    static std::string Text(Point point) { return " " + Text(point.x) + " " + Text(point.y); }
    static std::string Text(const Box& box)
    {
        return Text(Point{box.x, box.y}) + Text(Point{box.width, box.height});
    }
    static std::string Text(const book::Color& color)
    {
        char text[8];
        std::snprintf(text, sizeof text, "#%02x%02x%02x", color.red, color.green, color.blue);
        return text;
    }
    static std::string Text(const Brush& brush)
    {
        if (brush.fill.gradient)
            return "gradient " + Text(brush.fill.gradient->degree);
        return Text(brush.fill.foreground.value_or(book::kWhite));
    }
    static std::string Text(const Pen& pen)
    {
        std::string text = Text(pen.color) + " " + Text(pen.width);
        for (const double dash : pen.dashes)
            text += "," + Text(dash);
        return text;
    }
};

/// Every character is half an em wide.
class EvenMeasure : public TextMeasure {
public:
    double Width(std::string_view text, const book::Font& font) const override
    {
        return static_cast<double>(text.size()) * font.size * kPixels / 2;
    }
    LineMetrics Metrics(const book::Font& font) const override
    {
        const double size = font.size * kPixels;
        return {0.75 * size, 0.25 * size, 1.25 * size};
    }

private:
    static constexpr double kPixels = 96.0 / 72;
};

} // namespace orrery::look
