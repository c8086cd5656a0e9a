#pragma once

#include "engines/builtin/xls/compound/bytes.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::xls {

/// Reads the fields of a record one after the other. Each function throws Error(DamagedWorkbook)
/// if its bytes are not all there.
class ByteCursor {
public:
    explicit ByteCursor(std::string_view bytes, std::size_t at = 0) : bytes_(bytes), at_(at) {}

    std::uint8_t U8() { return ReadNumber<std::uint8_t>(bytes_, Move(1)); }
    std::uint16_t U16() { return ReadNumber<std::uint16_t>(bytes_, Move(2)); }
    std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
    std::uint32_t U32() { return ReadNumber<std::uint32_t>(bytes_, Move(4)); }
    double Double() { return std::bit_cast<double>(ReadNumber<std::uint64_t>(bytes_, Move(8))); }
    std::string_view Take(std::size_t size) { return bytes_.substr(Move(size), size); }
    void Skip(std::size_t size) { Move(size); }

    std::size_t Position() const { return at_; }
    std::size_t Left() const { return bytes_.size() - at_; }
    std::string_view All() const { return bytes_; }

private:
    std::size_t Move(std::size_t size)
    {
        Slice(bytes_, at_, size);
        const std::size_t at = at_;
        at_ += size;
        return at;
    }

    std::string_view bytes_;
    std::size_t at_;
};

} // namespace orrery::xls
