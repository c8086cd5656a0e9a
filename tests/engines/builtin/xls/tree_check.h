#pragma once

#include "engines/builtin/xls/compound/directory_tree.h"

#include <string>

namespace orrery::xls::test {

/// What is wrong with the tree of a storage's members, or "". Checks the rules of red-black trees
/// independently, and the order of names with `CompareNames`.
std::string FindTreeFault(const Directory& directory, EntryId storage);
/// The same for all storages.
std::string FindTreeFault(const Directory& directory);

} // namespace orrery::xls::test
