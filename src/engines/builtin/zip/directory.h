#pragma once

#include "engines/builtin/zip/entry.h"
#include "engines/builtin/zip/file_window.h"

#include <vector>

namespace orrery::zip {

/// The entries of a zip container, in the order of its directory. Throws Error: NotAWorkbook if the
/// file is no zip container at all, PasswordProtected, DamagedWorkbook. A container in which other
/// readers could see other entries is damaged: one with two directories, or with an entry that has
/// a second name in an extra field or behind a zero byte. [APPNOTE] 4.3.12 to 4.3.16
std::vector<Entry> ReadDirectory(FileWindow& file);

} // namespace orrery::zip
