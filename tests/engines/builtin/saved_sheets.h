#pragma once

#include "book/contract_engine.h"

#include <filesystem>
#include <vector>

namespace orrery::test {

// The sheets of a saved workbook for the contract suite, read without the engine's code.
std::vector<contract::SavedSheet> ReadXlsx(const std::filesystem::path& path);
std::vector<contract::SavedSheet> ReadXls(const std::filesystem::path& path);

} // namespace orrery::test
