#include "engines/builtin/zip/deflate.h"

#include <array>
#include <cassert>
#include <libdeflate.h>
#include <limits>
#include <new>
#include <utility>
#include <zlib.h>

namespace orrery::zip {
namespace {

constexpr int kLevel = 6;       // of libdeflate: smaller than zlib's level 6
constexpr int kStreamLevel = 6; // of zlib, its default
constexpr std::size_t kMostAtOnce = std::size_t{1} << 20U;

} // namespace

void Deflater::Closer::operator()(libdeflate_compressor* compressor) const
{
    libdeflate_free_compressor(compressor);
}

Deflater::Deflater() : compressor_(libdeflate_alloc_compressor(kLevel))
{
    if (!compressor_)
        throw std::bad_alloc();
}

std::size_t Deflater::MostPacked(std::size_t size)
{
    return libdeflate_deflate_compress_bound(nullptr, size);
}

void Deflater::Compress(std::string_view content, Packed& packed)
{
    packed.bytes.resize(MostPacked(content.size()));
    const std::size_t size =
        libdeflate_deflate_compress(compressor_.get(), content.data(), content.size(),
                                    packed.bytes.data(), packed.bytes.size());
    assert(size != 0); // the room is never too small
    packed.bytes.resize(size);
    packed.crc = libdeflate_crc32(0, content.data(), content.size());
    packed.size = content.size();
}

class DeflateStream {
public:
    DeflateStream()
    {
        if (deflateInit2(&stream_, kStreamLevel, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~DeflateStream() { deflateEnd(&stream_); }
    DeflateStream(const DeflateStream&) = delete;
    DeflateStream& operator=(const DeflateStream&) = delete;

    /// Compresses bytes to the end of `packed` and counts them there.
    void Add(std::string_view bytes, Packed& packed)
    {
        packed.crc = static_cast<std::uint32_t>(
            crc32_z(packed.crc, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
        packed.size += bytes.size();
        while (!bytes.empty()) {
            constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
            const std::string_view some = bytes.substr(0, kMost);
            Run(some, Z_NO_FLUSH, packed.bytes);
            bytes.remove_prefix(some.size());
        }
    }

    /// Ends at a byte; what follows does not refer to what came before.
    void Separate(Packed& packed) { Run({}, Z_FULL_FLUSH, packed.bytes); }
    void Finish(Packed& packed) { Run({}, Z_FINISH, packed.bytes); }

private:
    void Run(std::string_view bytes, int flush, std::string& packed)
    {
        stream_.next_in = // zlib does not write to it
            const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
        std::array<char, 1U << 15U> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
        do {
            stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
            stream_.avail_out = static_cast<uInt>(piece.size());
            [[maybe_unused]] const int result = deflate(&stream_, flush);
            assert(result != Z_STREAM_ERROR);
            packed.append(piece.data(), piece.size() - stream_.avail_out);
        } while (stream_.avail_out == 0);
    }

    z_stream stream_{};
};

const Packed& SharedText::Chunk(std::size_t number)
{
    auto& chunk = chunks_.at(number);
    if (!chunk) {
        Packed packed;
        DeflateStream stream;
        stream.Add(text_.substr(number * kChunk, kChunk), packed);
        stream.Separate(packed);
        chunk = std::move(packed);
    }
    return *chunk;
}

EntrySink::EntrySink() = default;

EntrySink::~EntrySink() = default;

void EntrySink::Add(std::string_view bytes)
{
    if (!stream_ && content_.size() + bytes.size() > kMostAtOnce)
        BeginStream();
    if (stream_)
        stream_->Add(bytes, packed_);
    else
        content_ += bytes;
}

void EntrySink::BeginStream()
{
    stream_ = std::make_unique<DeflateStream>();
    stream_->Add(content_, packed_);
    std::string().swap(content_);
}

void EntrySink::Add(SharedText& text, std::size_t begin, std::size_t end)
{
    constexpr std::size_t kChunk = SharedText::kChunk;
    const std::size_t first = (begin + kChunk - 1) / kChunk;
    const std::size_t last = end / kChunk; // behind the whole chunks
    if (first >= last) {
        Add(text.Text().substr(begin, end - begin));
        return;
    }
    if (!stream_)
        BeginStream();
    Add(text.Text().substr(begin, first * kChunk - begin));
    stream_->Separate(packed_);
    for (std::size_t number = first; number < last; ++number)
        AddPacked(text.Chunk(number));
    Add(text.Text().substr(last * kChunk, end - last * kChunk));
}

void EntrySink::AddPacked(const Packed& chunk)
{
    packed_.bytes += chunk.bytes;
    packed_.crc = static_cast<std::uint32_t>(
        crc32_combine(packed_.crc, chunk.crc, static_cast<z_off_t>(chunk.size)));
    packed_.size += chunk.size;
}

EntryContent EntrySink::Finish()
{
    if (!stream_)
        return std::move(content_);
    stream_->Finish(packed_);
    return std::move(packed_);
}

} // namespace orrery::zip
