#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::look {

/// Numbers in a file; what lies behind its end reads as 0.
class ByteView {
public:
    ByteView(std::string_view bytes, bool isBigEndian) : bytes_(bytes), isBig_(isBigEndian) {}

    std::size_t Size() const { return bytes_.size(); }
    bool Has(std::size_t at, std::size_t count) const
    {
        return at <= bytes_.size() && count <= bytes_.size() - at;
    }
    std::uint8_t U8(std::size_t at) const
    {
        return at < bytes_.size() ? static_cast<std::uint8_t>(bytes_[at]) : std::uint8_t{0};
    }
    std::uint16_t U16(std::size_t at) const
    {
        const unsigned first = U8(at);
        const unsigned second = U8(at + 1);
        return static_cast<std::uint16_t>(isBig_ ? first << 8 | second : second << 8 | first);
    }
    std::uint32_t U32(std::size_t at) const
    {
        const std::uint32_t first = U16(at);
        const std::uint32_t second = U16(at + 2);
        return isBig_ ? first << 16 | second : second << 16 | first;
    }
    std::int16_t I16(std::size_t at) const { return static_cast<std::int16_t>(U16(at)); }
    std::int32_t I32(std::size_t at) const { return static_cast<std::int32_t>(U32(at)); }

private:
    std::string_view bytes_;
    bool isBig_;
};

} // namespace orrery::look
