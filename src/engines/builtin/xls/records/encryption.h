#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// The password of workbooks that are encrypted although they open without asking for one.
inline constexpr std::string_view kDefaultPassword = "VelvetSweatshop";

/// A workbook stream (BIFF8) as it reads without encryption, or nothing where it needs another
/// password (UTF-8) or a method that is not known. A stream without encryption comes back as it is.
/// In a decrypted one the record that says how to decrypt is gone, and the offsets that count from
/// the stream's beginning are right for that. Throws Error(DamagedWorkbook) without a subject.
/// [MS-XLS] 2.2.10
std::optional<std::string> Decrypt(std::string stream,
                                   std::string_view password = kDefaultPassword);

} // namespace orrery::xls
