#pragma once

namespace orrery::xls {

/// The capital of a UTF-16 unit by Unicode's simple case conversion, for the scripts of the Windows
/// code pages; other units are unchanged. It does not depend on the locale.
char16_t ToUpperUnit(char16_t unit);

} // namespace orrery::xls
