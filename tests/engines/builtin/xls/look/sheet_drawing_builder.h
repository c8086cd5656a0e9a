#pragma once

#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The drawings of a sheet for tests: art in pieces, with the records that follow each of them.
namespace orrery::xls::test {

struct ArtPiece {
    std::string art;
    std::string records; ///< OBJ, TXO, a chart
};
using ArtPieces = std::vector<ArtPiece>;

inline ArtPieces operator+(ArtPieces left, const ArtPieces& right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline std::size_t ArtSizeOf(const ArtPieces& pieces)
{
    std::size_t size = 0;
    for (const ArtPiece& piece : pieces)
        size += piece.art.size();
    return size;
}

/// The pieces in a container.
inline ArtPieces InContainer(std::uint16_t type, ArtPieces pieces)
{
    std::string header;
    AppendU16(header, 15);
    AppendU16(header, type);
    AppendU32(header, static_cast<std::uint32_t>(ArtSizeOf(pieces)));
    if (pieces.empty())
        pieces.emplace_back();
    pieces.front().art.insert(0, header);
    return pieces;
}

/// An anchor on the sheet: column, 1/1024, row, 1/256, twice.
inline std::string AnchorOf(const std::vector<std::uint16_t>& fields)
{
    return ArtOf(0xF010, Numbers({0}) + Numbers(fields));
}

inline std::string BoxOf(std::uint16_t type, const std::vector<std::int32_t>& sides)
{
    std::string data;
    for (const std::int32_t side : sides)
        AppendU32(data, static_cast<std::uint32_t>(side));
    return ArtOf(type, data);
}

inline std::string ChildAnchorOf(const std::vector<std::int32_t>& sides)
{
    return BoxOf(0xF00F, sides);
}

inline std::string ObjectOf(std::uint16_t kind, std::uint16_t id = 1, std::uint16_t flags = 0)
{
    return RecordOf(RecordType::Obj,
                    Numbers({0x15, 0x12, kind, id, flags, 0, 0, 0, 0, 0, 0}) + Numbers({0, 0}));
}

/// A text with runs of "begin, font", and the records that continue it.
inline std::string TextOf(std::string_view text, std::uint16_t flags = 0x0212,
                          const std::vector<std::pair<std::uint16_t, std::uint16_t>>& runs = {},
                          std::uint16_t rotation = 0)
{
    std::string records =
        RecordOf(RecordType::TextObject,
                 Numbers({flags, rotation, 0, 0, 0, static_cast<std::uint16_t>(text.size()),
                          static_cast<std::uint16_t>(8 * (runs.size() + 1)), 0, 0}));
    records += RecordOf(RecordType::Continue, std::string(1, '\0') + std::string(text));
    std::string data;
    for (const auto& [begin, font] : runs)
        data += Numbers({begin, font, 0, 0});
    data += Numbers({static_cast<std::uint16_t>(text.size()), 0, 0, 0});
    return records + RecordOf(RecordType::Continue, data);
}

/// A shape: its type and flags, what its container has (anchor, properties), its object and text.
inline ArtPieces ShapePieces(std::uint16_t type, std::string_view parts, std::string_view object,
                             std::string_view text = {}, std::uint32_t flags = 0)
{
    ArtPieces pieces = {{ArtOf(0xF00A, LongNumbers({1025, flags}), type, 2) + std::string(parts) +
                             ArtOf(0xF011, {}),
                         std::string(object)}};
    if (!text.empty())
        pieces.push_back({ArtOf(0xF00D, {}), std::string(text)});
    return InContainer(0xF004, std::move(pieces));
}

/// A group: its coordinates, its anchor, its content.
inline ArtPieces GroupPieces(const std::vector<std::int32_t>& space, std::string_view anchor,
                             const ArtPieces& content)
{
    const std::string parts = BoxOf(0xF009, space) + ArtOf(0xF00A, LongNumbers({1026, 1}), 0, 2) +
                              std::string(anchor) + ArtOf(0xF011, {});
    return InContainer(0xF003, InContainer(0xF004, {{parts, ObjectOf(0)}}) + content);
}

/// The records of a sheet with these shapes.
inline std::string SheetWith(const ArtPieces& shapes)
{
    const ArtPieces sheet = {{ContainerOf(0xF004, BoxOf(0xF009, {0, 0, 0, 0}) +
                                                      ArtOf(0xF00A, LongNumbers({1024, 5}), 0, 2)),
                              {}}};
    const ArtPieces head = {{ArtOf(0xF008, LongNumbers({9, 1030}), 1), {}}};
    std::string records;
    for (const ArtPiece& piece : InContainer(0xF002, head + InContainer(0xF003, sheet + shapes)))
        records += RecordOf(RecordType::MsoDrawing, piece.art) + piece.records;
    return SheetOf(records);
}

/// A stream of a workbook with one sheet, which begins at `SheetBegin` of it.
inline std::string WorkbookWith(std::string_view globals, std::string_view sheet)
{
    const auto size = static_cast<std::uint32_t>(
        (BofOf(5) + BoundSheetOf("Plan", 0) + std::string(globals) + EofRecord()).size());
    return BofOf(5) + BoundSheetOf("Plan", size) + std::string(globals) + EofRecord() +
           std::string(sheet);
}

} // namespace orrery::xls::test
