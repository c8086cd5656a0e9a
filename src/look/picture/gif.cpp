#include "look/picture/gif.h"

#include <cstddef>

namespace orrery::look {
namespace {

constexpr std::size_t kGifHeader = 13;
constexpr std::size_t kGifImage = 10; // its descriptor

unsigned Byte(std::string_view bytes, std::size_t at)
{
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0U;
}

/// How long the table of colours is that the flags of a GIF's header tell of.
std::size_t ColorTable(unsigned flags)
{
    return (flags & 0x80U) != 0 ? std::size_t{3} << ((flags & 7U) + 1) : 0;
}

/// The end of the blocks of data that begin at `at`.
std::size_t EndOfBlocks(std::string_view bytes, std::size_t at)
{
    while (Byte(bytes, at) != 0)
        at += 1 + Byte(bytes, at);
    return at + 1;
}

} // namespace

std::string FirstImageOfGif(std::string_view bytes, const PictureInfo& info)
{
    std::size_t at = kGifHeader + ColorTable(Byte(bytes, 10));
    while (Byte(bytes, at) == '!') // an extension
        at = EndOfBlocks(bytes, at + 2);
    if (Byte(bytes, at) != ',')
        return {};
    const unsigned width = Byte(bytes, at + 5) | Byte(bytes, at + 6) << 8U;
    const unsigned height = Byte(bytes, at + 7) | Byte(bytes, at + 8) << 8U;
    if (width > info.width || height > info.height)
        return {};
    at += kGifImage + ColorTable(Byte(bytes, at + 9)) + 1; // and the size of codes
    return std::string(bytes.substr(0, EndOfBlocks(bytes, at))) + ';';
}

} // namespace orrery::look
