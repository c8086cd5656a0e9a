#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The header of a record of office art. [MS-ODRAW] 2.2.1
struct ArtRecord {
    std::uint16_t type = 0;
    std::uint16_t instance = 0; ///< 12 bits
    std::uint8_t version = 0;   ///< 15 if it contains records; some writers say 0 nevertheless
    std::size_t begin = 0;      ///< offset of the header in the art
    std::size_t size = 0;       ///< of the data, in bytes
    std::size_t depth = 0;      ///< 0 for the outermost

    std::size_t Data() const { return begin + 8; }
    std::size_t End() const { return begin + 8 + size; }
};

/// Office art that is split over several records, read as one sequence of bytes. Offsets count the
/// art's bytes.
class ArtStream {
public:
    struct Piece {
        std::size_t begin; ///< in the art
        std::size_t place; ///< the caller's offset of the piece
        std::string_view bytes;
    };

    void Append(std::string_view piece, std::size_t at);

    std::size_t Size() const { return size_; }
    const std::vector<Piece>& Pieces() const { return pieces_; }
    /// Whether that many bytes are there.
    bool Contains(std::size_t at, std::size_t size) const;

    // These throw Error(DamagedWorkbook) if the bytes are not there.
    std::uint16_t U16(std::size_t at) const;
    std::uint32_t U32(std::size_t at) const;
    std::size_t Place(std::size_t at) const; ///< the caller's offset of the byte

private:
    const Piece& PieceAt(std::size_t at) const;
    std::uint32_t Bytes(std::size_t at, std::size_t count) const;

    std::vector<Piece> pieces_;
    std::size_t size_ = 0;
};

/// Goes through the records of the art, each container before its content.
class ArtReader {
public:
    explicit ArtReader(const ArtStream& art) : art_(art) {}

    /// Goes to the next record. False at the end, and if a record does not fit into its container.
    bool Next(ArtRecord& record);
    /// After `Next` returned false: whether the end was reached.
    bool Complete() const { return position_ == art_.Size() && ends_.empty(); }

private:
    const ArtStream& art_;
    std::size_t position_ = 0;
    std::vector<std::size_t> ends_; // of the enclosing containers
};

} // namespace orrery::xls
