#include "engines/builtin/xlsx/look/drawing/read_drawings.h"

#include "engines/builtin/xlsx/look/drawing/controls.h"
#include "engines/builtin/xlsx/look/drawing/shapes.h"
#include "engines/builtin/xlsx/look/drawing/values/attribute_values.h"
#include "engines/builtin/xlsx/look/drawing/values/understood.h"
#include "engines/builtin/xml/reading.h"
#include "util/error.h"

#include <algorithm>

namespace orrery::xlsx {
namespace drawing {
namespace {

constexpr std::size_t kMaxAnchorNodes = 1000000;
constexpr std::size_t kLastRow = 1048576;
constexpr std::size_t kLastColumn = 16384;

std::int32_t CellNumber(const xml::Element& element, std::size_t last)
{
    const std::string text = element.Text();
    const auto digits = xml::ReadDigits(text);
    return digits ? static_cast<std::int32_t>(std::min(*digits, last - 1)) + 1 : 1;
}

/// The offset in a cell: an element with a number of ST_Coordinate.
std::int64_t OffsetOf(const xml::Element& element)
{
    return EmuOfText(element.Text(), 0);
}

book::AnchorPoint PointOf(const xml::Element& marker)
{
    book::AnchorPoint point;
    point.cell.column = CellNumber(marker.Child("col"), kLastColumn);
    point.cell.row = CellNumber(marker.Child("row"), kLastRow);
    point.emuX = OffsetOf(marker.Child("colOff"));
    point.emuY = OffsetOf(marker.Child("rowOff"));
    return point;
}

book::Anchor AnchorOf(const xml::Element& element)
{
    book::Anchor anchor;
    if (const xml::Element from = element.Child("from"))
        anchor.from = PointOf(from);
    if (const xml::Element position = element.Child("pos")) {
        anchor.from.emuX = EmuOf(position, "x", 0);
        anchor.from.emuY = EmuOf(position, "y", 0);
    }
    if (const xml::Element to = element.Child("to"))
        anchor.to = PointOf(to);
    const xml::Element extent = element.Child("ext");
    anchor.width = std::max<std::int64_t>(EmuOf(extent, "cx", 0), 0);
    anchor.height = std::max<std::int64_t>(EmuOf(extent, "cy", 0), 0);
    return anchor;
}

/// Excel anchors what is turned by about 90 or 270 degrees as it lies then.
bool LiesOnItsSide(double rotation)
{
    return (rotation >= 45 && rotation < 135) || (rotation >= 225 && rotation < 315);
}

/// Reads a sheet's drawings and what is left out of them.
class DrawingsReader {
public:
    DrawingsReader(const Package& package, const builtin::ThemeColors& theme, book::SheetLook& look)
        : package_(package), format_(package), style_{theme, format_}, pictures_(package),
          look_(look)
    {
    }

    void Read(const std::string& sheetPart)
    {
        try {
            for (const Relationship& relationship : package_.RelationshipsOf(sheetPart).All()) {
                if (!relationship.External && relationship.Is("drawing"))
                    ReadPart(ResolveTarget(sheetPart, relationship.Target));
            }
            for (const Relationship& relationship : package_.RelationshipsOf(sheetPart).All()) {
                if (!relationship.External && relationship.Is("vmlDrawing"))
                    ReadControlPart(ResolveTarget(sheetPart, relationship.Target));
            }
        }
        catch (const util::Error&) {
            look_.leftOut.push_back({"drawings", sheetPart, "the list of its parts is damaged"});
        }
        Report();
    }

private:
    void ReadPart(const std::string& part)
    {
        try {
            const PartText text = package_.ReadXml(part);
            ShapeReader shapes(package_, part, style_, pictures_, budget_);
            xml::Scanner scanner(*text, part);
            xml::EnterRoot(scanner);
            xml::ForEachUnderstoodChild(scanner, UnderstandsDrawing,
                                        [&] { ReadAnchor(scanner, shapes); });
        }
        catch (const util::Error&) {
            look_.leftOut.push_back({"drawings", part, "the part is missing or damaged"});
        }
    }

    void ReadAnchor(xml::Scanner& scanner, ShapeReader& shapes)
    {
        if (!scanner.LocalName().ends_with("Anchor"))
            return scanner.SkipElement();
        if (budget_.shapes >= ShapeBudget::kMaxShapes) {
            ++budget_.tooMany;
            return scanner.SkipElement();
        }
        const xml::Tree tree(scanner, UnderstandsDrawing, kMaxAnchorNodes);
        for (const xml::Element element : tree.Root()) {
            auto drawing = shapes.Read(element);
            if (!drawing)
                continue;
            drawing->anchor = AnchorOf(tree.Root());
            drawing->isAnchorTurned =
                drawing->anchor.to.has_value() && LiesOnItsSide(drawing->rotation);
            look_.drawings.push_back(std::move(*drawing));
        }
        if (!tree.IsWhole())
            ++budget_.tooMany;
    }

    void ReadControlPart(const std::string& part)
    {
        try {
            ReadControls(package_, part, pictures_, budget_, look_);
        }
        catch (const util::Error&) {
            look_.leftOut.push_back({"control", part, "the part is missing or damaged"});
        }
    }

    void Add(const char* what, std::size_t count, const std::string& reason)
    {
        if (count > 0)
            look_.leftOut.push_back({what, "", std::to_string(count) + ": " + reason});
    }

    void Report()
    {
        Add("drawing", budget_.tooMany,
            "the sheet has more than 10,000 shapes, or very large ones");
        Add("drawing", budget_.tooDeep, "they are nested more than 32 deep");
        Add("freeform", budget_.tooFine, "the sheet's outlines have more than 500,000 points");
        Add("chart or diagram", budget_.unreadable, "their parts are missing or damaged");
        Add("picture", pictures_.tooLarge, "the sheet's pictures have more than 64 MiB");
        Add("picture", pictures_.linked, "they lie outside of the workbook");
        Add("picture", pictures_.unknown, "they are damaged, or of a kind that is not known");
    }

    const Package& package_;
    FormatScheme format_;
    StyleSource style_;
    Pictures pictures_;
    ShapeBudget budget_;
    book::SheetLook& look_;
};

} // namespace
} // namespace drawing

void ReadDrawings(const Package& package, const std::string& sheetPart,
                  const builtin::ThemeColors& theme, book::SheetLook& look)
{
    drawing::DrawingsReader(package, theme, look).Read(sheetPart);
}

} // namespace orrery::xlsx
