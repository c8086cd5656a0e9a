#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::util {

/// A constant of at most `capacity` bytes that lies where it is declared. A table of such texts
/// holds no addresses, so nothing has to be set in it when the program starts.
template <std::size_t capacity> class FixedText {
public:
    constexpr FixedText() = default;
    /// A longer text does not compile.
    consteval FixedText(const char* text)
    {
        static_assert(capacity <= UINT8_MAX);
        for (; text[size_] != '\0'; ++size_)
            bytes_.at(size_) = text[size_];
    }

    constexpr operator std::string_view() const { return {bytes_.data(), size_}; }

    friend constexpr bool operator==(const FixedText& left, std::string_view right)
    {
        return std::string_view(left) == right;
    }

private:
    std::array<char, capacity> bytes_{};
    std::uint8_t size_ = 0;
};

} // namespace orrery::util
