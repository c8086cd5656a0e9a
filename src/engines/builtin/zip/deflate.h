#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::zip {

/// Bytes compressed with the deflate method, [RFC 1951].
struct Packed {
    std::string bytes;
    std::uint32_t crc = 0;  ///< of the unpacked bytes, as zip containers have it
    std::uint64_t size = 0; ///< of the unpacked bytes
};

/// A stream of zlib's without header and trailer.
class DeflateStream;

/// A text that many entries contain with small changes: its chunks are compressed once, not once
/// for each entry. The text must outlive it.
class SharedText {
public:
    /// Large enough to compress as well as the whole, but for a hundredth.
    static constexpr std::size_t kChunk = std::size_t{1} << 18U;

    explicit SharedText(std::string_view text) : text_(text), chunks_(text.size() / kChunk) {}

    std::string_view Text() const { return text_; }
    /// The chunk from offset `number * kChunk` on, compressed without regard to what is around it:
    /// its blocks can stand anywhere in a stream that ends at a byte before them. Throws
    /// std::bad_alloc.
    const Packed& Chunk(std::size_t number);

private:
    std::string_view text_;
    std::vector<std::optional<Packed>> chunks_; // by number; what is left at the end is no chunk
};

/// Takes the content of one entry piece by piece and compresses it. Its functions throw
/// std::bad_alloc.
class EntrySink {
public:
    EntrySink();
    ~EntrySink();
    EntrySink(const EntrySink&) = delete;
    EntrySink& operator=(const EntrySink&) = delete;

    void Add(std::string_view bytes);
    /// Adds the bytes [begin:end) of a text that other entries contain, too.
    void Add(SharedText& text, std::size_t begin, std::size_t end);
    /// Ends the content and gives it. Nothing can be added afterwards.
    Packed Finish();

private:
    void AddPacked(const Packed& chunk);

    std::unique_ptr<DeflateStream> stream_;
    Packed packed_;
};

} // namespace orrery::zip
