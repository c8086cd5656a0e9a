#pragma once

#include <cstddef>

/// What the look of one sheet holds at most; the rest is left out. Sheets that people make stay far
/// below.
namespace orrery::xlsx {

inline constexpr std::size_t kMaxCells = std::size_t{4} << 20U;
inline constexpr std::size_t kMaxRows = 1048576;
inline constexpr std::size_t kMaxCellText = std::size_t{4} * 32767; ///< bytes
inline constexpr std::size_t kMaxFormula = std::size_t{4} * 8192;   ///< bytes
inline constexpr std::size_t kMaxRuns = std::size_t{1} << 20U;      ///< of all rich texts
inline constexpr std::size_t kMaxMerges = std::size_t{1} << 18U;
inline constexpr std::size_t kMaxRules = 20000;  ///< of conditional formats
inline constexpr std::size_t kMaxRanges = 20000; ///< of all conditional formats
inline constexpr std::size_t kMaxTables = 1000;
inline constexpr std::size_t kMaxTableColumns = 16384;
inline constexpr std::size_t kMaxSparklines = 100000;
inline constexpr std::size_t kMaxBreaks = 1026; ///< of Excel, for each direction
inline constexpr std::size_t kMaxLeftOut = 200;

/// What many cells can make large although the file is small: one shared text or formula counts for
/// each cell that has it.
struct CellLimits {
    std::size_t textBytes = std::size_t{128} << 20U;
    std::size_t formulaBytes = std::size_t{64} << 20U;
};

} // namespace orrery::xlsx
