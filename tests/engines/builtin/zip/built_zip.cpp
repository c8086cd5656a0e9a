#include "zip/built_zip.h"

#include <stdexcept>
#include <zlib.h>

namespace orrery::test {
namespace {

constexpr std::uint16_t kDescriptorFlag = 8;
constexpr std::uint32_t kLocalSignature = 0x04034B50;
constexpr std::uint32_t kInZip64 = 0xFFFFFFFF;

void Put(std::string& bytes, std::uint64_t value, int width)
{
    for (int i = 0; i < width; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::uint32_t Get(std::string_view bytes, std::size_t at, int width)
{
    std::uint32_t value = 0;
    for (int i = 0; i < width; ++i)
        value |= static_cast<std::uint32_t>(
                     static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i))))
                 << (8 * i);
    return value;
}

std::uint32_t Checksum(std::string_view bytes)
{
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uInt>(bytes.size())));
}

struct Built {
    const ZipPart& part;
    std::string packed;
    std::size_t offset;

    std::uint32_t Size() const
    {
        return part.declaredSize.value_or(static_cast<std::uint32_t>(part.content.size()));
    }
    std::uint32_t PackedSize() const
    {
        return part.declaredPacked.value_or(static_cast<std::uint32_t>(packed.size()));
    }
    std::uint32_t Sum() const { return part.declaredChecksum.value_or(Checksum(part.content)); }
    std::uint16_t Flags() const
    {
        return static_cast<std::uint16_t>(part.flags | (part.descriptor ? kDescriptorFlag : 0));
    }
    int Version() const { return part.zip64 ? 45 : 20; }
    /// The two sizes as a zip64 field.
    std::string Zip64Field() const
    {
        std::string field;
        if (part.zip64) {
            Put(field, 1, 2);
            Put(field, 16, 2);
            Put(field, Size(), 8);
            Put(field, PackedSize(), 8);
        }
        return field;
    }
    /// Version, flags, method, time, checksum, sizes, which both headers contain.
    void PutCommon(std::string& bytes, bool local) const
    {
        const bool later = local && part.descriptor;
        Put(bytes, static_cast<std::uint64_t>(Version()), 2);
        Put(bytes, Flags(), 2);
        Put(bytes, part.stored ? 0 : 8, 2);
        Put(bytes, part.time, 2);
        Put(bytes, part.date, 2);
        Put(bytes, later ? 0 : Sum(), 4);
        Put(bytes, later ? 0 : part.zip64 ? kInZip64 : PackedSize(), 4);
        Put(bytes, later ? 0 : part.zip64 ? kInZip64 : Size(), 4);
        Put(bytes, part.name.size(), 2);
    }
};

void PutLocal(std::string& zip, const Built& built)
{
    const std::string extra = built.part.descriptor ? std::string() : built.Zip64Field();
    Put(zip, kLocalSignature, 4);
    built.PutCommon(zip, true);
    Put(zip, extra.size(), 2);
    zip += built.part.name + extra + built.packed;
    if (built.part.descriptor) {
        Put(zip, 0x08074B50, 4);
        Put(zip, built.Sum(), 4);
        Put(zip, built.PackedSize(), 4);
        Put(zip, built.Size(), 4);
    }
}

void PutCentral(std::string& zip, const Built& built)
{
    const std::string extra = built.Zip64Field() + built.part.extra;
    Put(zip, 0x02014B50, 4);
    Put(zip, static_cast<std::uint64_t>(built.Version()), 2);
    built.PutCommon(zip, false);
    Put(zip, extra.size(), 2);
    Put(zip, 0, 2); // comment
    Put(zip, 0, 2); // disk
    Put(zip, 0, 2); // attributes
    Put(zip, 0, 4);
    Put(zip, built.offset, 4);
    zip += built.part.name + extra;
}

} // namespace

std::string Deflate(std::string_view text, int level)
{
    z_stream stream = {};
    if (deflateInit2(&stream, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflateInit2");
    std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::string UnicodePathField(std::string_view headerName, std::string_view name)
{
    std::string field;
    Put(field, 0x7075, 2); // [APPNOTE] 4.6.9
    Put(field, 5 + name.size(), 2);
    Put(field, 1, 1);
    Put(field, Checksum(headerName), 4);
    return field.append(name);
}

std::string BuildZip(const std::vector<ZipPart>& parts)
{
    std::string zip;
    std::vector<Built> all;
    for (const ZipPart& part : parts) {
        all.push_back({part, part.stored ? part.content : Deflate(part.content, 1), zip.size()});
        PutLocal(zip, all.back());
    }
    const std::size_t directory = zip.size();
    for (const Built& built : all)
        PutCentral(zip, built);
    const std::size_t size = zip.size() - directory;
    Put(zip, 0x06054B50, 4);
    Put(zip, 0, 4); // disks
    Put(zip, all.size(), 2);
    Put(zip, all.size(), 2);
    Put(zip, size, 4);
    Put(zip, directory, 4);
    Put(zip, 0, 2); // comment
    return zip;
}

std::optional<std::string> PackedBytes(std::string_view zip, std::string_view name)
{
    constexpr std::size_t kHeader = 30;
    for (std::size_t at = 0; at + kHeader <= zip.size() && Get(zip, at, 4) == kLocalSignature;) {
        const std::size_t packed = Get(zip, at + 18, 4);
        const std::size_t nameSize = Get(zip, at + 26, 2);
        const std::size_t data = at + kHeader + nameSize + Get(zip, at + 28, 2);
        if ((Get(zip, at + 6, 2) & kDescriptorFlag) != 0 || packed == kInZip64)
            return std::nullopt;
        if (zip.substr(at + kHeader, nameSize) == name)
            return std::string(zip.substr(data, packed));
        at = data + packed;
    }
    return std::nullopt;
}

} // namespace orrery::test
