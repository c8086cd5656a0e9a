#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The macros of a workbook: the project that both formats keep in a compound file. [MS-OVBA]
namespace orrery::vba {

/// Unpacks what the format calls a compressed container: chunks of 4096 bytes in which tokens refer
/// to what came before in the chunk. [MS-OVBA] 2.4.1
/// Throws Error(DamagedWorkbook) without a subject, also if there are more than `most` bytes.
std::string Decompress(std::string_view container, std::size_t most);

/// The same in the other direction. A last chunk that does not become smaller is stored as it is,
/// and zeros fill it, as the format has it.
std::string Compress(std::string_view bytes);

} // namespace orrery::vba
