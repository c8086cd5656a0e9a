#pragma once

#include <string_view>

namespace orrery::builtin {

/// Whether a password (UTF-8) opens an encrypted package. `info` is the stream "EncryptionInfo" of
/// its compound file. False also if the method is unknown. Throws Error(DamagedWorkbook), without a
/// subject, if the stream is damaged. [MS-OFFCRYPTO] 2.3.4.5 and 2.3.4.10
bool OpensPackage(std::string_view info, std::string_view password);

} // namespace orrery::builtin
