#pragma once

#include "engines/builtin/zip/deflate.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <utility>

struct zip;
struct zip_source;
struct zip_stat;

namespace orrery::zip {

/// The content of a new entry for libzip, which asks for it while it closes the container and
/// writes the compressed bytes as they are.
class EntrySource {
public:
    using Producer = std::function<void(EntrySink&)>;

    explicit EntrySource(Producer producer) : producer_(std::move(producer)) {}

    /// A source for libzip, which frees it; null if out of memory. This object outlives it.
    zip_source* Create(struct zip* container);
    /// What the producer threw; null if nothing.
    std::exception_ptr Failure() const { return failure_; }

private:
    struct Commands; // libzip's

    bool Produce();
    std::int64_t Describe(struct zip_stat& stat) const;
    std::size_t Read(char* buffer, std::size_t length);
    void Discard();

    Producer producer_;
    Packed packed_;
    std::size_t packedSize_ = 0;
    bool isKnown_ = false;     // what `packed_` says of the bytes, which stays known without them
    bool isProduced_ = false;  // the bytes
    std::size_t position_ = 0; // of what libzip has read
    std::exception_ptr failure_;
};

} // namespace orrery::zip
