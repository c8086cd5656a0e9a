#include "look/layout/metrics.h"

#include "look/values/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace orrery::look {
namespace {

constexpr double kTwipsPerPixel = 15;
/// What the formats allow; a damaged file may say anything.
constexpr double kWidestColumn = 255;
constexpr double kHighestRow = 409.5;

struct KnownDigit {
    std::string_view font;
    double size;
    std::int32_t pixels;
};

constexpr auto kKnownDigits = std::to_array<KnownDigit>({
    {"Arial", 10, 7},
    {"Arial", 12, 9},
    {"Calibri", 11, 7},
    {"Calibri", 12, 8},
    {"MS PGothic", 11, 8},
    {"PMingLiU", 12, 8},
    {"SimSun", 12, 8},
    {"Verdana", 10, 8},
});

double Within(double value, double largest)
{
    return value > 0 ? std::min(value, largest) : 0; // NaN, too, is 0
}

/// Whether a whole number of pixels is stored as this width, to the last 256th.
bool Explains(std::int32_t digitPixels, double width)
{
    const double pixels = std::round(width * digitPixels);
    return std::abs(std::trunc(pixels / digitPixels * 256) / 256 - width) < 1e-6;
}

} // namespace

std::optional<std::int32_t> KnownDigitPixels(const book::Font& normal)
{
    for (const KnownDigit& known : kKnownDigits) {
        if (known.font == normal.name && known.size == normal.size)
            return known.pixels;
    }
    return std::nullopt;
}

std::optional<std::int32_t> RevealedDigitPixels(const std::vector<book::ColumnLook>& columns)
{
    // A width that is a whole number is one for every digit.
    const bool tells =
        std::any_of(columns.begin(), columns.end(), [](const book::ColumnLook& column) {
            return column.width && *column.width != std::trunc(*column.width);
        });
    for (std::int32_t digit = 4; tells && digit <= 40; ++digit) {
        if (std::all_of(columns.begin(), columns.end(), [digit](const book::ColumnLook& column) {
                return !column.width || Explains(digit, *column.width);
            }))
            return digit;
    }
    return std::nullopt;
}

std::int32_t PaddingPixels(std::int32_t digitPixels)
{
    return 2 * ((digitPixels + 3) / 4) + 1;
}

std::int32_t ColumnPixels(double width, std::int32_t digitPixels)
{
    const double within = Within(width, kWidestColumn);
    return static_cast<std::int32_t>(
        std::trunc((256 * within + std::trunc(128.0 / digitPixels)) / 256 * digitPixels));
}

std::int32_t DefaultColumnPixels(double baseWidth, std::int32_t digitPixels)
{
    const double digits = std::trunc(Within(baseWidth, kWidestColumn)) * digitPixels;
    return (static_cast<std::int32_t>(digits) + PaddingPixels(digitPixels) + 7) / 8 * 8;
}

double DigitWidth(const book::Font& normal, const TextMeasure& measure)
{
    double widest = 0;
    for (const char digit : std::string_view("0123456789"))
        widest = std::max(widest, measure.Width({&digit, 1}, normal));
    // A half is rounded down: the digit of Calibri 11, which has 111.504 twips, counts as 111.
    const double twips = std::ceil(widest * kTwipsPerPixel - 0.51);
    return std::max(twips, 1.0) / kTwipsPerPixel;
}

double ColumnWidth(double width, double digitWidth)
{
    return Within(width, kWidestColumn) * digitWidth;
}

double DefaultColumnWidth(const book::SheetLook& sheet, double digitWidth)
{
    constexpr double kPadding = 5;
    if (sheet.standardWidth)
        return ColumnWidth(*sheet.standardWidth, digitWidth);
    if (sheet.basePadding)
        return ColumnWidth(sheet.baseWidth + *sheet.basePadding, digitWidth);
    return ColumnWidth(sheet.baseWidth, digitWidth) + kPadding;
}

double RowHeight(double points, bool isWholePixels)
{
    // Twips, in which files hold heights, are rounded first: 12.75 points are 17 pixels.
    const double twips = std::round(Within(points, kHighestRow) * 20);
    return isWholePixels ? std::floor(twips / kTwipsPerPixel) : twips / kTwipsPerPixel;
}

double DefaultRowHeight(const book::SheetLook& sheet, const book::Font& normal,
                        const TextMeasure& measure)
{
    if (sheet.defaultRowHeight && *sheet.defaultRowHeight > 0)
        return RowHeight(*sheet.defaultRowHeight, sheet.areRowsWholePixels);
    return FittingRowHeight(normal, measure);
}

double FittingRowHeight(const book::Font& font, const TextMeasure& measure)
{
    const LineMetrics metrics = measure.Metrics(font);
    const double height =
        metrics.rowHeight > 0 ? metrics.rowHeight : std::round(metrics.height) + 2;
    return std::min(height, std::floor(kHighestRow * kPixelsPerPoint));
}

} // namespace orrery::look
