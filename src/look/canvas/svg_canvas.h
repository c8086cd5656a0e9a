#pragma once

#include "look/canvas/canvas.h"
#include "look/canvas/svg_definitions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::look {

/// A canvas that writes a picture as SVG: UTF-8, no scripts, nothing from other files. Texts stay
/// texts. Pictures are embedded: PNG, JPEG, GIF, BMP and SVG, each once.
class SvgCanvas : public Canvas {
public:
    /// Width and height in pixels; the title is what readers call the picture.
    SvgCanvas(double width, double height, std::string_view title);

    void FillBox(const Box& box, const Brush& brush) override;
    void DrawLine(Point from, Point to, const Pen& pen) override;
    void DrawPath(const Path& path, const std::optional<Brush>& fill,
                  const std::optional<Pen>& pen) override;
    void DrawText(Point at, std::string_view text, const TextStyle& style, double width) override;
    bool DrawPicture(const Box& box, const PictureSource& picture) override;
    void Clip(const Box& box) override;
    void Rotate(Point around, double degrees) override;
    void Flip(const Box& box, bool horizontally, bool vertically) override;
    void Place(Point origin, double scale) override;
    void Restore() override;
    void BeginGroup(std::string_view id, std::string_view title) override;
    void EndGroup() override;

    /// The whole picture. What was begun and not ended ends here; nothing is drawn afterwards.
    std::string Finish();

private:
    enum class Kind : std::uint8_t { Root, Id, Clip, Transform };
    /// An element that is open. One that stays empty is left out; one around a single element
    /// gives it its attribute where that means the same.
    struct Frame {
        Kind kind = Kind::Root;
        std::string attribute; ///< ` id="B6"`
        std::string title;
        std::string content;
        std::size_t elements = 0;
        bool hasId = false; ///< of the only element
        bool hasClip = false;
        bool hasTransform = false;
    };

    void Push(Kind kind, std::string attribute, std::string_view title = {});
    void Pop();
    void AppendFrame(Frame frame);
    void AppendElement(std::string_view element);
    void FlushPending();
    /// Adds to the path that is being gathered, or begins another one.
    void Gather(const std::string& css, std::string_view path, bool joins);
    void FillAlongEdges(const Box& box, const book::Gradient& gradient, double opacity);
    std::string PenCss(const Pen& pen) const;
    std::string BrushCss(const Brush& brush);

    double width_ = 0;
    double height_ = 0;
    std::string title_;
    SvgDefinitions definitions_;
    SvgClasses classes_;
    std::vector<Frame> frames_;
    std::string pendingCss_;
    std::string pendingPath_;
};

} // namespace orrery::look
