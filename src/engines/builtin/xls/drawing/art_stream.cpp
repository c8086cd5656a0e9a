#include "engines/builtin/xls/drawing/art_stream.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::size_t kArtHeader = 8;
constexpr unsigned kContainer = 15;
constexpr std::uint16_t kFirstContainer = 0xF000; // OfficeArtDggContainer, [MS-ODRAW] 2.2.12
constexpr std::uint16_t kLastContainer = 0xF005;  // OfficeArtSolverContainer, [MS-ODRAW] 2.2.18

/// Report servers write containers with the version of other records.
bool IsContainer(const ArtRecord& record)
{
    return record.version == kContainer ||
           (record.type >= kFirstContainer && record.type <= kLastContainer);
}

} // namespace

void ArtStream::Append(std::string_view piece, std::size_t at)
{
    if (piece.empty())
        return;
    pieces_.push_back({size_, at, piece});
    size_ += piece.size();
}

bool ArtStream::Contains(std::size_t at, std::size_t size) const
{
    return at <= size_ && size_ - at >= size;
}

std::uint16_t ArtStream::U16(std::size_t at) const
{
    return static_cast<std::uint16_t>(Bytes(at, 2));
}

std::uint32_t ArtStream::U32(std::size_t at) const
{
    return Bytes(at, 4);
}

std::size_t ArtStream::Place(std::size_t at) const
{
    const Piece& piece = PieceAt(at);
    return piece.place + (at - piece.begin);
}

const ArtStream::Piece& ArtStream::PieceAt(std::size_t at) const
{
    if (at >= size_)
        ThrowTooShort();
    const auto behind = std::upper_bound(
        pieces_.begin(), pieces_.end(), at,
        [](std::size_t offset, const Piece& piece) { return offset < piece.begin; });
    return *(behind - 1);
}

std::uint32_t ArtStream::Bytes(std::size_t at, std::size_t count) const
{
    std::uint32_t value = 0;
    for (std::size_t i = count; i-- > 0;) {
        const Piece& piece = PieceAt(at + i);
        value = value << 8 | static_cast<unsigned char>(piece.bytes[at + i - piece.begin]);
    }
    return value;
}

bool ArtReader::Next(ArtRecord& record)
{
    while (!ends_.empty() && position_ == ends_.back())
        ends_.pop_back();
    const std::size_t end = ends_.empty() ? art_.Size() : ends_.back();
    if (end - position_ < kArtHeader)
        return false;
    const std::uint16_t first = art_.U16(position_);
    record = {art_.U16(position_ + 2),
              static_cast<std::uint16_t>(first >> 4),
              static_cast<std::uint8_t>(first & 0xF),
              position_,
              art_.U32(position_ + 4),
              ends_.size()};
    if (record.size > end - position_ - kArtHeader)
        return false;
    position_ += kArtHeader;
    if (IsContainer(record))
        ends_.push_back(position_ + record.size);
    else
        position_ += record.size;
    return true;
}

} // namespace orrery::xls
