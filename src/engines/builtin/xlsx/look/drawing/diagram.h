#pragma once

#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xml/tree.h"

#include <memory>
#include <optional>
#include <string>

namespace orrery::xlsx::drawing {

/// The part with the shapes that a diagram was last drawn with ([MS-ODRAWXML] 2.4), beside its data
/// part, which a relationship of the drawing part leads to. Nothing if it has none.
std::optional<std::string> FindDiagramPart(const Package& package, const std::string& drawingPart,
                                           const std::string& dataRelationship);

/// The shapes of such a part, in EMU from the diagram's upper left corner.
class DiagramShapes {
public:
    /// The text outlives the object. Throws Error.
    explicit DiagramShapes(std::string_view xml);
    /// The element with the shapes.
    xml::Element Root() const;
    // How far the shapes reach.
    double Width() const { return width_; }
    double Height() const { return height_; }

private:
    std::unique_ptr<xml::Tree> tree_;
    double width_ = 0;
    double height_ = 0;
};

} // namespace orrery::xlsx::drawing
