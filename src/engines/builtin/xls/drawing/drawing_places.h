#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// Which of the workbook's two drawing groups a drawing belongs to. Ids are unique in a group.
enum class DrawingKind {
    Sheet,       ///< on a sheet or in a chart
    HeaderFooter ///< the pictures of a header or footer
};

/// A number of four bytes in the office art of a sheet. The bytes need not be adjacent: art
/// continues in another record wherever the first one ends.
struct ArtNumber {
    std::array<std::uint32_t, 4> at{}; ///< offsets in the sheet, lowest byte first
    std::uint32_t value = 0;           ///< as read

    void Put(std::string& sheet, std::uint32_t newValue) const;
};

/// A place where a rule, a property or a selection refers to a shape of its drawing.
struct ShapeReference {
    ArtNumber id;
    std::size_t shape = 0; ///< index of the first shape that has it
};

/// A drawing and the places of its ids. [MS-ODRAW] 2.2.13
struct Drawing {
    DrawingKind kind = DrawingKind::Sheet;
    ArtNumber header;              ///< contains the drawing's id in bits 4 to 15
    std::uint32_t shapeCount = 0;  ///< as written
    ArtNumber lastShape;           ///< id of the shape that was drawn last
    std::vector<ArtNumber> shapes; ///< ids of the shapes, those in groups included
    std::vector<ShapeReference> references;
    std::vector<std::uint32_t>
        pictures; ///< indexes of the group's pictures, from 1, once for each use

    std::uint32_t Id() const { return header.value >> 4 & 0xFFF; }
};

/// The drawings of a sheet's substream and of its charts.
struct DrawingPlaces {
    std::vector<Drawing> drawings;
    bool understood = true; ///< false: some art is damaged, and drawings may be missing
};

/// Finds the drawings in a sheet's substream, BOF to EOF. Damaged art only clears `understood`.
/// Throws Error(DamagedWorkbook) if a record runs past the end.
DrawingPlaces FindDrawings(std::string_view sheet);

} // namespace orrery::xls
