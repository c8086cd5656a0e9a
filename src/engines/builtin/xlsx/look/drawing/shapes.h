#pragma once

#include "book/look/drawing.h"
#include "engines/builtin/xlsx/look/drawing/pictures.h"
#include "engines/builtin/xlsx/look/drawing/values/fills.h"

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace orrery::xlsx::drawing {

/// What a sheet may have of drawings, and how many were left out because of it.
struct ShapeBudget {
    static constexpr std::size_t kMaxShapes = 10000;
    static constexpr int kMaxNesting = 32;
    static constexpr std::size_t kMaxDiagrams = 200;
    static constexpr std::size_t kMaxSteps = 500000; ///< of the outlines of freeforms

    std::size_t shapes = 0; ///< read so far, those in groups included
    std::size_t tooMany = 0;
    std::size_t tooDeep = 0;
    std::size_t unreadable = 0; ///< charts and diagrams
    std::size_t diagrams = 0;
    std::size_t stepsLeft = kMaxSteps;
    std::size_t tooFine = 0;                                          ///< freeforms
    std::map<std::string, std::shared_ptr<const book::Chart>> charts; ///< by part
};

/// Reads the shapes of one drawing part. ECMA-376 20.5
class ShapeReader {
public:
    ShapeReader(const Package& package, std::string part, const StyleSource& style,
                Pictures& pictures, ShapeBudget& budget)
        : package_(package), part_(std::move(part)), style_(style), pictures_(pictures),
          budget_(budget)
    {
    }

    /// A shape, connector, picture, group or frame; its anchor is the caller's. Nothing for other
    /// elements, for hidden ones and beyond the budget.
    std::optional<book::Drawing> Read(const xml::Element& element);

private:
    /// The coordinates in a group, ECMA-376 20.1.7.5, and what its shapes take from it.
    struct GroupSpace {
        double x = 0;
        double y = 0;
        double width = 0;
        double height = 0;
        ShapeFill fill;
    };

    std::optional<book::Drawing> ReadIn(const xml::Element& element, const GroupSpace* space,
                                        int depth);
    void ReadShape(const xml::Element& element, const GroupSpace* space, book::Drawing& drawing);
    void ReadPicture(const xml::Element& element, book::Drawing& drawing);
    void ReadGeometry(const xml::Element& properties, book::Drawing& drawing);
    void ReadLook(const xml::Element& element, const GroupSpace* space, book::Drawing& drawing);
    void ReadGroup(const xml::Element& element, const GroupSpace* space, int depth,
                   book::Drawing& drawing);
    void ReadChildren(const xml::Element& element, const GroupSpace& space, int depth,
                      book::Drawing& drawing);
    void ReadFrame(const xml::Element& element, int depth, book::Drawing& drawing);
    void ReadChart(const std::string& relationship, bool isExtended, book::Drawing& drawing);
    std::shared_ptr<const book::Chart> FindChart(const std::string& part, bool isExtended);
    void ReadDiagram(const xml::Element& data, int depth, book::Drawing& drawing);
    std::optional<std::string> TargetOf(const std::string& relationship) const;

    const Package& package_;
    std::string part_;
    const StyleSource& style_;
    Pictures& pictures_;
    ShapeBudget& budget_;
};

} // namespace orrery::xlsx::drawing
