#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls {

// Special values in a sector table. [MS-CFB] 2.1
inline constexpr std::uint32_t kLastSectorNumber = 0xFFFFFFFA;
inline constexpr std::uint32_t kDifatSector = 0xFFFFFFFC;
inline constexpr std::uint32_t kFatSector = 0xFFFFFFFD;
inline constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
inline constexpr std::uint32_t kFreeSector = 0xFFFFFFFF;

/// Sectors of one size and the table that chains them: those of a file, or the small ones of its
/// mini stream. A sector can be claimed by one chain only; claimed sectors can be read. Damage
/// throws Error(DamagedWorkbook).
class SectorChains {
public:
    /// The bytes must outlive it. The last sector may be shorter than the others.
    SectorChains(std::string_view bytes, std::size_t sectorSize);

    /// The number of the sector after each one. Sectors beyond the table's end are free.
    void SetTable(std::vector<std::uint32_t> next) { next_ = std::move(next); }
    std::size_t Count() const { return count_; }
    /// Throws for a sector past the end.
    std::string_view Sector(std::uint32_t sector) const;

    /// Begins a new chain: sectors claimed from now on belong to it.
    void BeginClaim() { ++claim_; }
    /// Throws for a sector that is already claimed and for one past the end.
    void Claim(std::uint32_t sector);
    /// Claims a chain and checks that it holds `size` bytes.
    void ClaimStream(std::uint32_t start, std::uint64_t size);
    /// Claims a chain up to its end or to the sector with the last of `most` bytes, and returns its
    /// bytes.
    std::string ClaimAndRead(std::uint32_t start,
                             std::uint64_t most = std::numeric_limits<std::uint64_t>::max());
    /// Frees the memory of the claims.
    void EndClaims() { std::vector<std::uint32_t>().swap(claims_); }

    /// Visits the bytes of a chain that was claimed with that size, in pieces as large as possible.
    void Visit(std::uint32_t start, std::uint64_t size,
               const std::function<void(std::string_view)>& visit) const;

private:
    std::uint32_t Next(std::uint32_t sector) const;

    std::string_view bytes_;
    std::size_t sectorSize_;
    std::size_t count_;
    std::vector<std::uint32_t> next_;
    std::vector<std::uint32_t> claims_; ///< for each sector its chain, from 1
    std::uint32_t claim_ = 0;
};

} // namespace orrery::xls
