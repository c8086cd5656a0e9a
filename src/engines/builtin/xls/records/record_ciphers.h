#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// Decrypts the bytes [begin:end) of a stream in place; they belong to a record with `dataSize`
/// bytes of data.
using RecordCipher = std::function<void(std::string& stream, std::size_t begin, std::size_t end,
                                        std::size_t dataSize)>;

/// The cipher for the data of a FILEPASS record; empty if the password (UTF-8) is wrong or the
/// method is unknown. Throws Error(DamagedWorkbook) if the data is too short. [MS-XLS] 2.4.117,
/// [MS-OFFCRYPTO] 2.3.5 to 2.3.7
RecordCipher MakeRecordCipher(std::string_view filePass, std::string_view password);

} // namespace orrery::xls
