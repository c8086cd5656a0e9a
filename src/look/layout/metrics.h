#pragma once

#include "book/look/sheet_look.h"
#include "look/text/text_measure.h"

#include <cstdint>
#include <optional>
#include <vector>

/// The arithmetic of column widths and row heights. There are two: the whole pixels of Excel's
/// window, for which the digit's width must be that of Excel's font, and the lengths of a picture,
/// in which the digit is as wide as the font that draws it, so that texts fit their cells.
namespace orrery::look {

// In whole pixels at 96 dpi.

/// The widest digit of a font, or nothing if it is not known: 7 for Calibri 11 and Arial 10.
std::optional<std::int32_t> KnownDigitPixels(const book::Font& normal);
/// The smallest width of a digit that explains stored widths, which are whole pixels in 1/256 of
/// it; nothing if none does, or every one.
std::optional<std::int32_t> RevealedDigitPixels(const std::vector<book::ColumnLook>& columns);
/// What a column is wider than its digits: both margins and the grid line.
std::int32_t PaddingPixels(std::int32_t digitPixels);
/// A width of a file, padding included. ECMA-376 18.3.1.13
std::int32_t ColumnPixels(double width, std::int32_t digitPixels);
/// Of columns without a width, if the sheet has only the number of their digits: rounded up to a
/// multiple of eight.
std::int32_t DefaultColumnPixels(double baseWidth, std::int32_t digitPixels);

// In a picture.

/// The widest digit of a font: in whole twips, as printing programs count it.
double DigitWidth(const book::Font& normal, const TextMeasure& measure);
double ColumnWidth(double width, double digitWidth);
double DefaultColumnWidth(const book::SheetLook& sheet, double digitWidth);
/// Of a row that is stored with a height. Whole pixels are rounded down.
double RowHeight(double points, bool isWholePixels);
/// Of rows without a height.
double DefaultRowHeight(const book::SheetLook& sheet, const book::Font& normal,
                        const TextMeasure& measure);
/// Of a row that is made to fit one line of a font.
double FittingRowHeight(const book::Font& font, const TextMeasure& measure);

} // namespace orrery::look
