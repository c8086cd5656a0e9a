#include "engines/builtin/xls/records/digest.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "util/unicode.h"

#include <array>

namespace orrery::xls {

std::string Digest(mbedtls_md_type_t type, std::string_view bytes)
{
    const mbedtls_md_info_t* const info = mbedtls_md_info_from_type(type);
    std::array<unsigned char, MBEDTLS_MD_MAX_SIZE> digest{};
    mbedtls_md(info, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
               digest.data());
    return {reinterpret_cast<const char*>(digest.data()), mbedtls_md_get_size(info)};
}

std::string Utf16Bytes(std::string_view utf8)
{
    std::string bytes;
    for (const char16_t unit : util::ToUtf16(utf8))
        AppendU16(bytes, unit);
    return bytes;
}

std::string NumberBytes(std::uint32_t number)
{
    std::string bytes;
    AppendU32(bytes, number);
    return bytes;
}

} // namespace orrery::xls
