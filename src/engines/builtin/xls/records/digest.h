#pragma once

#include <cstdint>
#include <mbedtls/md.h>
#include <string>
#include <string_view>

/// What the ways to encrypt a workbook have in common.
namespace orrery::xls {

std::string Digest(mbedtls_md_type_t type, std::string_view bytes);

/// A password (UTF-8) as it goes into a digest.
std::string Utf16Bytes(std::string_view utf8);

/// The number in four bytes.
std::string NumberBytes(std::uint32_t number);

} // namespace orrery::xls
