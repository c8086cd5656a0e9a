#pragma once

#include "places/places.h"
#include "util/paths.h"

#include <filesystem>

namespace orrery::excel_test {

// Workbooks of three sheets: "Sheet1" with the text "first" in A1 and the number 42 in B2, "Sheet2"
// with "second" in A1, "Third" with "third" in C3.
inline std::filesystem::path XlsxTemplate()
{
    return places::SourceFolder() / "tests/engines/builtin/xlsx/data/contract.xlsx";
}

inline std::filesystem::path XlsTemplate()
{
    return places::SourceFolder() / "tests/engines/builtin/xls/data/contract.xls";
}

} // namespace orrery::excel_test
