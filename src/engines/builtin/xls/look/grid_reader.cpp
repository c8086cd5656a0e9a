#include "engines/builtin/xls/look/grid_reader.h"

#include "engines/builtin/xls/look/records/byte_cursor.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

constexpr double kTwipsPerPoint = 20;
constexpr double kDigit = 256; // the unit of widths is its part
constexpr std::size_t kRows = 65536;

constexpr bool Has(std::uint32_t flags, unsigned bit)
{
    return (flags >> bit & 1U) != 0;
}

} // namespace

bool GridReader::Read(const LookRecord& record)
{
    switch (record.type) {
    case RecordType::ColumnInfo:
        ReadColumns(record.data);
        return true;
    case RecordType::Row:
        ReadRow(record.data);
        return true;
    case RecordType::DefaultRowHeight:
        ReadDefaultHeight(record.data);
        return true;
    case RecordType::DefaultColumnWidth:
        look_.baseWidth = std::min<std::uint16_t>(ReadU16(record.data, 0), 255);
        return true;
    case RecordType::StandardWidth:
        look_.standardWidth = ReadU16(record.data, 0) / kDigit;
        return true;
    case RecordType::Window2:
        ReadWindow(record.data);
        return true;
    case RecordType::Pane:
        ReadPane(record.data);
        return true;
    default:
        return false;
    }
}

/// Where columns are described twice, the later description counts. Some writers count one column
/// too many. [MS-XLS] 2.4.53
void GridReader::ReadColumns(std::string_view data)
{
    ByteCursor cursor(data);
    const std::size_t first = cursor.U16();
    const std::size_t last = cursor.U16();
    Column column;
    column.width = cursor.U16();
    const auto format = cursor.U16();
    const std::uint16_t flags = cursor.Left() >= 2 ? cursor.U16() : std::uint16_t{0};
    if (first >= columns_.size() || last < first)
        ThrowDamaged("its columns are not in the sheet");
    column.style = styles_.IndexOf(format);
    column.isHidden = Has(flags, 0) || column.width == 0;
    for (std::size_t i = first; i <= std::min(last, columns_.size() - 1); ++i)
        columns_[i] = column;
}

/// [MS-XLS] 2.4.221
void GridReader::ReadRow(std::string_view data)
{
    constexpr std::uint16_t kHasDefaultHeight = 0x8000; // of older versions
    constexpr std::uint16_t kFormat = 0x0FFF;
    ByteCursor cursor(data);
    book::RowLook row;
    const std::size_t index = cursor.U16();
    row.row = static_cast<std::int32_t>(index) + 1;
    cursor.Skip(4);
    const auto height = cursor.U16();
    cursor.Skip(4);
    const auto flags = cursor.U16();
    const auto format = cursor.U16();
    if ((height & kHasDefaultHeight) == 0 && height > 0)
        row.height = height / kTwipsPerPoint;
    row.isHidden = Has(flags, 5);
    row.isCustomHeight = Has(flags, 6);
    if (Has(flags, 7))
        row.style = styles_.IndexOf(format & kFormat);
    if (rows_.empty())
        rows_.resize(kRows);
    if (rows_[index] != 0) {
        look_.rows[rows_[index] - 1] = row;
        return;
    }
    look_.rows.push_back(row);
    rows_[index] = static_cast<std::uint32_t>(look_.rows.size());
}

/// [MS-XLS] 2.4.87
void GridReader::ReadDefaultHeight(std::string_view data)
{
    ByteCursor cursor(data);
    const auto flags = cursor.U16();
    const auto height = cursor.U16();
    look_.areRowsHidden = Has(flags, 1);
    if (height > 0)
        look_.defaultRowHeight = height / kTwipsPerPoint;
}

/// A sheet may have several windows, of which the first counts. [MS-XLS] 2.4.346
void GridReader::ReadWindow(std::string_view data)
{
    if (std::exchange(hasWindow_, true))
        return;
    ByteCursor cursor(data);
    const auto flags = cursor.U16();
    auto& view = look_.view;
    view.showsFormulas = Has(flags, 0);
    view.showsGridLines = Has(flags, 1);
    isFrozen_ = Has(flags, 3);
    view.showsZeros = Has(flags, 4);
    view.isRightToLeft = Has(flags, 6);
    if (cursor.Left() < 6)
        return;
    const int row = cursor.U16();
    view.topLeft = {row + 1, (cursor.U16() & 0xFF) + 1};
    if (const auto color = cursor.U16(); !Has(flags, 5))
        view.gridColor = colors_.Indexed(color, ColorUse::Line);
}

/// [MS-XLS] 2.4.189
void GridReader::ReadPane(std::string_view data)
{
    ByteCursor cursor(data);
    const auto columns = cursor.U16();
    const auto rows = cursor.U16();
    if (!isFrozen_)
        return;
    look_.view.frozenColumns = std::min<int>(columns, 255);
    look_.view.frozenRows = rows;
}

void GridReader::Finish()
{
    std::sort(look_.rows.begin(), look_.rows.end(),
              [](const auto& a, const auto& b) { return a.row < b.row; });
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (!columns_[i])
            continue;
        const auto number = static_cast<std::int32_t>(i) + 1;
        if (i > 0 && columns_[i - 1] == columns_[i]) {
            look_.columns.back().last = number;
            continue;
        }
        look_.columns.push_back({number, number, columns_[i]->width / kDigit, columns_[i]->isHidden,
                                 columns_[i]->style});
    }
}

} // namespace orrery::xls
