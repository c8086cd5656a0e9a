#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct libdeflate_decompressor;

namespace orrery::zip {

/// Bytes that cannot be unpacked; the text says why in words that follow the name of an entry.
class UnpackError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Unpacks bytes that were compressed with the deflate method, [RFC 1951].
class Inflater {
public:
    /// Throws std::bad_alloc.
    Inflater();

    /// The whole content, at most `size` bytes, which are allocated at once. Throws UnpackError.
    std::string Unpack(std::string_view packed, std::size_t size) const;

private:
    struct Closer {
        void operator()(libdeflate_decompressor* decompressor) const;
    };
    std::unique_ptr<libdeflate_decompressor, Closer> decompressor_;
};

/// A stream of zlib's for unpacking.
struct InflateState;

/// Unpacks content of any size piece by piece.
class InflateStream {
public:
    using Take = std::function<void(std::string_view)>;

    /// Throws std::bad_alloc.
    InflateStream();
    ~InflateStream();
    InflateStream(const InflateStream&) = delete;
    InflateStream& operator=(const InflateStream&) = delete;

    /// Takes the next packed bytes and gives what they unpack to; ignores those behind the end.
    /// Throws UnpackError and what `take` throws.
    void Add(std::string_view packed, const Take& take);
    /// Throws UnpackError if the content has not ended.
    void Finish() const;

private:
    std::unique_ptr<InflateState> state_;
};

} // namespace orrery::zip
