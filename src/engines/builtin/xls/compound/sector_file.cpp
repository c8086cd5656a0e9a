#include "engines/builtin/xls/compound/sector_file.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/sector_chains.h"
#include "util/error.h"
#include "util/file_error.h"
#include "util/paths.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <ios>
#include <system_error>
#include <utility>

namespace orrery::xls {
namespace {

using util::Error;

// Beyond it a file would need a sector that locks byte ranges, and readers that count in 31 bits
// fail. [MS-CFB] 2.7
constexpr std::uint64_t kMaxBytes = 0x7FFFFF00;

void AppendAll(std::string& bytes, const std::vector<std::uint32_t>& numbers)
{
    for (const std::uint32_t number : numbers)
        AppendU32(bytes, number);
}

std::size_t CeilDiv(std::size_t dividend, std::size_t divisor)
{
    return (dividend + divisor - 1) / divisor;
}

} // namespace

SectorFile::SectorFile(const std::filesystem::path& path, std::filesystem::path target,
                       std::size_t sectorSize)
    : target_(std::move(target)), sectorSize_(sectorSize), out_(file_)
{
    errno = 0;
    Check(file_.open(path, std::ios::out | std::ios::binary | std::ios::trunc) != nullptr);
    Append(std::string(sectorSize_, '\0')); // room for the header
}

SectorFile::SectorFile(std::size_t sectorSize) : sectorSize_(sectorSize), out_(memory_)
{
    Append(std::string(sectorSize_, '\0'));
}

std::uint32_t SectorFile::NextSector() const
{
    assert(size_ % sectorSize_ == 0);
    return static_cast<std::uint32_t>(size_ / sectorSize_ - 1);
}

void SectorFile::Append(std::string_view bytes)
{
    if (bytes.size() > kMaxBytes - size_) {
        throw Error(util::ErrorKind::FileNotWritable, util::FromPath(target_),
                    "an .xls file cannot be larger than 2 GiB");
    }
    errno = 0;
    const auto count = static_cast<std::streamsize>(bytes.size());
    Check(out_.sputn(bytes.data(), count) == count);
    size_ += bytes.size();
}

void SectorFile::Patch(std::uint64_t offset, std::string_view bytes)
{
    if (offset > size_ || bytes.size() > size_ - offset)
        ThrowTooShort();
    const auto seek = [this](std::uint64_t to) {
        return out_.pubseekpos(static_cast<std::streamoff>(to)) != std::streambuf::pos_type(-1);
    };
    const auto count = static_cast<std::streamsize>(bytes.size());
    errno = 0;
    Check(seek(offset) && out_.sputn(bytes.data(), count) == count && seek(size_));
}

void SectorFile::EndChain()
{
    Append(std::string((sectorSize_ - size_ % sectorSize_) % sectorSize_, '\0'));
    if (fat_.size() == NextSector())
        return;
    while (fat_.size() < NextSector())
        fat_.push_back(static_cast<std::uint32_t>(fat_.size() + 1));
    fat_.back() = kEndOfChain;
}

std::uint32_t SectorFile::WriteChain(std::string_view bytes)
{
    if (bytes.empty())
        return kEndOfChain;
    const std::uint32_t first = NextSector();
    Append(bytes);
    EndChain();
    return first;
}

SectorFile::Tables SectorFile::WriteTables(std::uint32_t inHeader)
{
    const std::size_t perFat = sectorSize_ / 4;
    const std::size_t perDifat = perFat - 1;
    std::size_t fats = 0;
    std::size_t difats = 0;
    // The table also lists its own sectors.
    for (std::size_t all = 0; all != fat_.size() + fats + difats;) {
        all = fat_.size() + fats + difats;
        fats = CeilDiv(all, perFat);
        difats = fats <= inHeader ? 0 : CeilDiv(fats - inHeader, perDifat);
    }
    Tables tables;
    tables.firstFat = NextSector();
    tables.fatCount = static_cast<std::uint32_t>(fats);
    tables.firstDifat = difats == 0 ? kEndOfChain : tables.firstFat + tables.fatCount;
    tables.difatCount = static_cast<std::uint32_t>(difats);

    fat_.resize(fat_.size() + fats, kFatSector);
    fat_.resize(fat_.size() + difats, kDifatSector);
    fat_.resize(fats * perFat, kFreeSector);
    std::string bytes;
    AppendAll(bytes, fat_);
    for (std::size_t i = 0; i < difats; ++i) {
        for (std::size_t listed = 0; listed < perDifat; ++listed) {
            const std::size_t index = inHeader + i * perDifat + listed;
            AppendU32(bytes, index < fats ? static_cast<std::uint32_t>(tables.firstFat + index)
                                          : kFreeSector);
        }
        const bool isLast = i + 1 == difats;
        AppendU32(bytes,
                  isLast ? kEndOfChain : static_cast<std::uint32_t>(tables.firstDifat + i + 1));
    }
    Append(bytes);
    return tables;
}

void SectorFile::Close()
{
    errno = 0;
    Check(file_.close() != nullptr);
}

void SectorFile::Check(bool isDone) const
{
    if (isDone)
        return;
    throw util::MakeWriteError(target_, {errno, std::generic_category()});
}

} // namespace orrery::xls
