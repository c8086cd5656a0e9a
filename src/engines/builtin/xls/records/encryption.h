#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// The password of workbooks that are encrypted but open without asking for one.
inline constexpr std::string_view kDefaultPassword = "VelvetSweatshop";

/// Decrypts a workbook stream (BIFF8). Nothing if it needs another password (UTF-8) or uses an
/// unknown method; a stream without encryption is returned unchanged. The FILEPASS record is
/// removed from a decrypted one, and offsets that count from the stream's beginning are corrected.
/// Throws Error(DamagedWorkbook) without a subject. [MS-XLS] 2.2.10
std::optional<std::string> Decrypt(std::string stream,
                                   std::string_view password = kDefaultPassword);

/// Whether a workbook stream needs a password other than the default one, or uses an unknown
/// method. Also for the streams of earlier versions, and for the sheets that were files of their
/// own. Throws as `Decrypt`.
bool NeedsPassword(std::string_view stream);

} // namespace orrery::xls
