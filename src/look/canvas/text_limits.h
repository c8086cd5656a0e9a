#pragma once

namespace orrery::look {

/// What canvases that draw texts by the fonts of the system have in common. A drawn text may be so
/// much wider or narrower than it was measured, in pixels; else it is stretched.
inline constexpr double kWidthTolerance = 0.2;
/// Larger fonts than a sheet can have are made smaller, lest numbers overflow.
inline constexpr double kLargestFont = 2000; ///< pixels
/// The longest line of text, in font sizes times bytes.
inline constexpr double kLongestText = 1e6;

} // namespace orrery::look
