#pragma once

#include "engines/builtin/xls/compound/directory_tree.h"

#include <string>

namespace orrery::xls::test {

/// What is wrong with the tree of a storage's members, or "". It knows the rules of red-black trees
/// on its own, and the order of names from `CompareNames`.
std::string FaultOfTree(const Directory& directory, EntryId storage);
/// The same for all storages.
std::string FaultOfTrees(const Directory& directory);

} // namespace orrery::xls::test
