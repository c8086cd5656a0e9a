#include "engines/builtin/xls/formula_text/token_text.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/numbers.h"

#include <cmath>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kRelativeColumn = 0x4000;
constexpr std::uint16_t kRelativeRow = 0x8000;
constexpr std::uint16_t kColumnMask = 0x3FFF;
constexpr std::uint16_t kLastRow = 0xFFFF;
constexpr std::uint16_t kLastColumn = 0x00FF;

/// One coordinate of a reference, from 0.
struct Coordinate {
    std::uint16_t value = 0;
    bool isRelative = false;
};

Coordinate RowOf(std::uint16_t row, std::uint16_t flags, ReferenceForm form, book::CellAddress cell)
{
    const bool isRelative = (flags & kRelativeRow) != 0;
    if (isRelative && form == ReferenceForm::Offset)
        row = static_cast<std::uint16_t>(row + static_cast<unsigned>(cell.row - 1));
    return {row, isRelative};
}

Coordinate ColumnOf(std::uint16_t flags, ReferenceForm form, book::CellAddress cell)
{
    const bool isRelative = (flags & kRelativeColumn) != 0;
    unsigned column = flags & kColumnMask;
    if (isRelative && form == ReferenceForm::Offset)
        column = (column + static_cast<unsigned>(cell.column - 1)) & kLastColumn;
    return {static_cast<std::uint16_t>(column), isRelative};
}

std::string RowText(const Coordinate& row)
{
    return (row.isRelative ? "" : "$") + std::to_string(row.value + 1);
}

std::string ColumnText(const Coordinate& column)
{
    std::string letters;
    for (unsigned rest = column.value + 1U; rest > 0; rest = (rest - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % 26));
    return (column.isRelative ? "" : "$") + letters;
}

void Sort(Coordinate& first, Coordinate& last)
{
    if (first.value > last.value) // an area that wraps at the edge of the sheet
        std::swap(first, last);
}

/// A value of an array constant. [MS-XLS] 2.5.198.59
std::optional<std::string> ArrayValue(std::string_view extra, std::size_t& at)
{
    constexpr std::size_t kSize = 9; // of all values but texts
    const auto kind = ReadU8(extra, at);
    if (kind == 0x02) {
        const auto text = ReadUnicodeString(extra, at + 1);
        at += 1 + text.size;
        return QuotedText(text.text);
    }
    const std::string_view value = Slice(extra, at, kSize);
    at += kSize;
    switch (kind) {
    case 0x00:
        return std::string();
    case 0x01:
        return NumberText(std::bit_cast<double>(ReadU64(value, 1)));
    case 0x04:
        return ReadU8(value, 1) != 0 ? "TRUE" : "FALSE";
    case 0x10:
        return ErrorText(ReadU8(value, 1));
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<std::string> NumberText(double number)
{
    constexpr double kLeastPlain = 1e-5;
    constexpr double kMostPlain = 1e15;
    if (!std::isfinite(number))
        return std::nullopt;
    const double size = std::abs(number);
    const bool isPlain = number == 0 || (size >= kLeastPlain && size < kMostPlain);
    const util::Digits digits = util::ShortestDigits(number);
    std::string text = isPlain ? PlainText(digits) : ScientificText(digits);
    const std::size_t exponent = text.find('e');
    if (exponent != text.npos) {
        text[exponent] = 'E';
        if (text[exponent + 2] == '0') // "1e-05"
            text.erase(exponent + 2, 1);
    }
    return number == 0 ? "0" : text;
}

std::optional<std::string> ErrorText(std::uint8_t code)
{
    switch (code) {
    case 0x00:
        return "#NULL!";
    case 0x07:
        return "#DIV/0!";
    case 0x0F:
        return "#VALUE!";
    case 0x17:
        return "#REF!";
    case 0x1D:
        return "#NAME?";
    case 0x24:
        return "#NUM!";
    case 0x2A:
        return "#N/A";
    default:
        return std::nullopt;
    }
}

std::string QuotedText(std::string_view text)
{
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
}

std::string CellText(std::string_view bytes, std::size_t at, ReferenceForm form,
                     book::CellAddress cell)
{
    const std::uint16_t flags = ReadU16(bytes, at + 2);
    return ColumnText(ColumnOf(flags, form, cell)) +
           RowText(RowOf(ReadU16(bytes, at), flags, form, cell));
}

std::string AreaText(std::string_view bytes, std::size_t at, ReferenceForm form,
                     book::CellAddress cell)
{
    const std::uint16_t firstFlags = ReadU16(bytes, at + 4);
    const std::uint16_t lastFlags = ReadU16(bytes, at + 6);
    Coordinate top = RowOf(ReadU16(bytes, at), firstFlags, form, cell);
    Coordinate bottom = RowOf(ReadU16(bytes, at + 2), lastFlags, form, cell);
    Coordinate left = ColumnOf(firstFlags, form, cell);
    Coordinate right = ColumnOf(lastFlags, form, cell);
    Sort(top, bottom);
    Sort(left, right);
    if (left.value == 0 && right.value == kLastColumn)
        return RowText(top) + ':' + RowText(bottom);
    if (top.value == 0 && bottom.value == kLastRow)
        return ColumnText(left) + ':' + ColumnText(right);
    return ColumnText(left) + RowText(top) + ':' + ColumnText(right) + RowText(bottom);
}

std::optional<std::string> ArrayText(std::string_view extra, std::size_t& at, std::size_t longest)
{
    const std::size_t columns = ReadU8(extra, at) + std::size_t{1};
    const std::size_t rows = ReadU16(extra, at + 1) + std::size_t{1};
    at += 3;
    std::string text = "{";
    for (std::size_t i = 0; i < rows * columns; ++i) {
        if (i > 0)
            text += i % columns == 0 ? ';' : ',';
        const auto value = ArrayValue(extra, at);
        if (!value || text.size() + value->size() > longest)
            return std::nullopt;
        text += *value;
    }
    return text + '}';
}

} // namespace orrery::xls
