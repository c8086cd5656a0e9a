#include "engines/builtin/zip/inflate.h"

#include <array>
#include <libdeflate.h>
#include <new>
#include <zlib.h>

namespace orrery::zip {
namespace {

constexpr const char* kDamaged = "its compressed bytes are damaged";

} // namespace

void Inflater::Closer::operator()(libdeflate_decompressor* decompressor) const
{
    libdeflate_free_decompressor(decompressor);
}

Inflater::Inflater() : decompressor_(libdeflate_alloc_decompressor())
{
    if (!decompressor_)
        throw std::bad_alloc();
}

std::string Inflater::Unpack(std::string_view packed, std::size_t size) const
{
    std::string bytes(size, '\0');
    std::size_t unpacked = 0;
    const auto result = libdeflate_deflate_decompress(
        decompressor_.get(), packed.data(), packed.size(), bytes.data(), bytes.size(), &unpacked);
    if (result == LIBDEFLATE_INSUFFICIENT_SPACE)
        throw UnpackError("it is longer than declared");
    if (result != LIBDEFLATE_SUCCESS)
        throw UnpackError(kDamaged);
    bytes.resize(unpacked);
    return bytes;
}

struct InflateState {
    z_stream stream = {};
    bool hasEnded = false;
};

InflateStream::InflateStream() : state_(std::make_unique<InflateState>())
{
    if (inflateInit2(&state_->stream, -MAX_WBITS) != Z_OK)
        throw std::bad_alloc();
}

InflateStream::~InflateStream()
{
    inflateEnd(&state_->stream);
}

void InflateStream::Add(std::string_view packed, const Take& take)
{
    z_stream& stream = state_->stream;
    stream.next_in = // zlib does not write to it
        const_cast<Bytef*>(reinterpret_cast<const Bytef*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    std::array<char, 1U << 16U> piece; // NOLINT(cppcoreguidelines-pro-type-member-init)
    while (!state_->hasEnded) {
        stream.next_out = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_out = static_cast<uInt>(piece.size());
        const int result = inflate(&stream, Z_NO_FLUSH);
        if (result == Z_MEM_ERROR)
            throw std::bad_alloc();
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
            throw UnpackError(kDamaged);
        state_->hasEnded = result == Z_STREAM_END;
        const std::size_t count = piece.size() - stream.avail_out;
        if (count == 0)
            return; // more input is needed
        take({piece.data(), count});
    }
}

void InflateStream::Finish() const
{
    if (!state_->hasEnded)
        throw UnpackError("its compressed bytes are cut off");
}

} // namespace orrery::zip
