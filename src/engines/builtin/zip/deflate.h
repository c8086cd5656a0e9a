#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct libdeflate_compressor;

namespace orrery::zip {

/// Bytes compressed with the deflate method, [RFC 1951].
struct Packed {
    std::string bytes;
    std::uint32_t crc = 0;  ///< of the unpacked bytes, as zip containers have it
    std::uint64_t size = 0; ///< of the unpacked bytes
};

/// Compresses small contents at once, better and in half the time of a stream.
class Deflater {
public:
    /// Throws std::bad_alloc.
    Deflater();

    /// The most packed bytes that so many can become.
    static std::size_t MostPacked(std::size_t size);
    /// Compresses into `packed`, which needs no memory if it has room for `MostPacked` bytes.
    /// Throws std::bad_alloc otherwise.
    void Compress(std::string_view content, Packed& packed);

private:
    struct Closer {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, Closer> compressor_;
};

/// A stream of zlib's without header and trailer.
class DeflateStream;

/// A text that many entries contain with small changes: its chunks are compressed once, not once
/// for each entry. The text must outlive it.
class SharedText {
public:
    /// Large enough to compress as well as the whole, but for a hundredth.
    static constexpr std::size_t kChunk = std::size_t{1} << 19U;

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

/// The content of an entry: a small one as it is, a large one compressed.
using EntryContent = std::variant<std::string, Packed>;

/// Takes the content of one entry piece by piece and compresses it as a stream when it gets large.
/// Its functions throw std::bad_alloc.
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
    EntryContent Finish();

private:
    void BeginStream();
    void AddPacked(const Packed& chunk);

    std::string content_;                   // all of it, as long as there is no stream
    std::unique_ptr<DeflateStream> stream_; // null for small contents
    Packed packed_;                         // what came out of the stream
};

} // namespace orrery::zip
