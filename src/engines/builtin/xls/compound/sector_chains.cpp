#include "engines/builtin/xls/compound/sector_chains.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>

namespace orrery::xls {

SectorChains::SectorChains(std::string_view bytes, std::size_t sectorSize)
    : bytes_(bytes), sectorSize_(sectorSize), count_((bytes.size() + sectorSize - 1) / sectorSize),
      claims_(count_)
{
}

std::string_view SectorChains::Sector(std::uint32_t sector) const
{
    if (sector >= count_)
        ThrowDamaged("a chain of its sectors leads past the end of the file");
    return bytes_.substr(sector * sectorSize_, sectorSize_);
}

void SectorChains::Claim(std::uint32_t sector)
{
    if (sector > kLastSectorNumber)
        ThrowDamaged("one of its streams ends too early");
    if (sector >= count_)
        ThrowDamaged("a chain of its sectors leads past the end of the file");
    if (claims_[sector] == claim_)
        ThrowDamaged("a chain of its sectors runs in a circle");
    if (claims_[sector] != 0)
        ThrowDamaged("two of its streams overlap");
    claims_[sector] = claim_;
}

void SectorChains::ClaimStream(std::uint32_t start, std::uint64_t size)
{
    if (size > bytes_.size())
        ThrowDamaged("one of its streams is longer than the file");
    BeginClaim();
    std::uint32_t sector = start;
    for (std::uint64_t rest = size; rest > 0; sector = Next(sector)) {
        Claim(sector);
        const std::uint64_t needed = std::min<std::uint64_t>(rest, sectorSize_);
        if (Sector(sector).size() < needed)
            ThrowDamaged("one of its streams ends too early");
        rest -= needed;
    }
}

std::string SectorChains::ClaimAndRead(std::uint32_t start, std::uint64_t most)
{
    BeginClaim();
    std::string bytes;
    std::uint32_t sector = start;
    for (; sector <= kLastSectorNumber && bytes.size() < most; sector = Next(sector)) {
        Claim(sector);
        bytes += Sector(sector);
    }
    bytes.resize(std::min<std::uint64_t>(bytes.size(), most));
    return bytes;
}

void SectorChains::Visit(std::uint32_t start, std::uint64_t size,
                         const std::function<void(std::string_view)>& visit) const
{
    std::uint32_t sector = start;
    while (size > 0) {
        const std::size_t begin = sector * sectorSize_;
        std::uint64_t length = 0;
        std::uint32_t expected = sector;
        while (sector == expected && length < size) {
            length += sectorSize_;
            sector = Next(sector);
            ++expected;
        }
        length = std::min(length, size);
        visit(bytes_.substr(begin, length));
        size -= length;
    }
}

std::uint32_t SectorChains::Next(std::uint32_t sector) const
{
    return sector < next_.size() ? next_[sector] : kFreeSector;
}

} // namespace orrery::xls
