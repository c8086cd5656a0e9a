#pragma once

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

/// The types of the records that the engine reads or writes. [MS-XLS] 2.3
enum class RecordType : std::uint16_t {
    Formula = 0x0006,
    Eof = 0x000A,
    Protect = 0x0012,
    Header = 0x0014,
    Footer = 0x0015,
    ExternSheet = 0x0017,
    Name = 0x0018, // "Lbl"
    VerticalPageBreaks = 0x001A,
    HorizontalPageBreaks = 0x001B,
    Note = 0x001C,
    Selection = 0x001D,
    DateMode = 0x0022, // "Date1904"
    ExternName = 0x0023,
    LeftMargin = 0x0026,
    RightMargin = 0x0027,
    TopMargin = 0x0028,
    BottomMargin = 0x0029,
    PrintHeadings = 0x002A, // "PrintRowCol"
    PrintGrid = 0x002B,
    FilePass = 0x002F,
    Font = 0x0031,
    Continue = 0x003C,
    Window1 = 0x003D,
    Pane = 0x0041,
    DConRef = 0x0051,
    DefaultColumnWidth = 0x0055,
    Obj = 0x005D,
    Uncalced = 0x005E,
    ColumnInfo = 0x007D,
    SheetProperties = 0x0081, // "WsBool"
    HorizontalCenter = 0x0083,
    VerticalCenter = 0x0084,
    BoundSheet = 0x0085, // "BoundSheet8"
    Palette = 0x0092,
    StandardWidth = 0x0099, // "DxGCol"
    PageSettings = 0x00A1,  // "Setup"
    MulRk = 0x00BD,
    MulBlank = 0x00BE,
    RichString = 0x00D6, // "RString"
    DbCell = 0x00D7,
    Xf = 0x00E0,
    MergeCells = 0x00E5,
    MsoDrawingGroup = 0x00EB,
    MsoDrawing = 0x00EC,
    MsoDrawingSelection = 0x00ED,
    Sst = 0x00FC,
    LabelSst = 0x00FD,
    ExtSst = 0x00FF,
    TabIds = 0x013D, // "RRTabId"
    SupBook = 0x01AE,
    UserSheetViewBegin = 0x01AA,
    UserSheetViewEnd = 0x01AB,
    ConditionalFormats = 0x01B0, // "CondFmt"
    ConditionalFormat = 0x01B1,
    TextObject = 0x01B6, // "TxO"
    Hyperlink = 0x01B8,
    CodeName = 0x01BA,
    DataValidation = 0x01BE,
    RecalcId = 0x01C1,
    Dimensions = 0x0200,
    Blank = 0x0201,
    Number = 0x0203,
    Label = 0x0204,
    BoolErr = 0x0205,
    String = 0x0207,
    Row = 0x0208,
    Index = 0x020B,
    Array = 0x0221,
    DefaultRowHeight = 0x0225,
    Table = 0x0236,
    Window2 = 0x023E,
    Style = 0x0293,
    Rk = 0x027E,
    Format = 0x041E,
    SharedFormula = 0x04BC,
    Bof = 0x0809,
    QueryField = 0x0807, // "Qsif"
    HeaderFooterPicture = 0x0866,
    TablesHeader = 0x0871, // "FeatHdr11"
    Feature11 = 0x0872,
    ContinueFrt11 = 0x0875,
    List12 = 0x0877,
    Feature12 = 0x0878,
    AutoFilter12 = 0x087E,
    ContinueFrt12 = 0x087F,
    SortData = 0x0895,
    Feature = 0x0868,              // "Feat"
    ConditionalFormats12 = 0x0879, // "CondFmt12"
    ConditionalFormat12 = 0x087A,  // "CF12"
    ConditionalFormatEx = 0x087B,  // "CFEx"
    XfChecksum = 0x087C,           // "XFCRC"
    XfExt = 0x087D,
    Theme = 0x0896,
    HeaderFooter = 0x089C,
    ChartLink = 0x1051, // "BRAI"
};

inline constexpr std::size_t kRecordHeader = 4; ///< bytes of type and size
/// In INDEX, the bytes before the offsets of the blocks. [MS-XLS] 2.4.144
inline constexpr std::size_t kIndexHead = 16;
inline constexpr std::size_t kMaxRecordSize = 8224; ///< bytes of data, [MS-XLS] 2.1.4

/// A record of a stream: type, size and data. [MS-XLS] 2.1.4
struct Record {
    RecordType type{};
    std::size_t begin = 0; ///< offset of its header
    std::string_view data;

    std::size_t DataBegin() const { return begin + kRecordHeader; }
    std::size_t End() const { return begin + kRecordHeader + data.size(); }
};

/// Goes through the records of a stream.
class RecordReader {
public:
    /// Begins at `begin`; offsets of records count from the stream's beginning.
    explicit RecordReader(std::string_view stream, std::size_t begin = 0);

    /// The next record, or nothing at the end of the stream.
    /// Throws Error(DamagedWorkbook) if a record runs past that end.
    std::optional<Record> Next()
    {
        const auto record = Peek();
        if (record)
            position_ = record->End();
        return record;
    }
    /// The record that `Next` would return, without moving on. Throws as `Next`.
    std::optional<Record> Peek() const
    {
        if (position_ >= stream_.size())
            return std::nullopt;
        if (!IsWhole())
            ThrowDamaged("a record runs past the end of the workbook stream");
        const auto type = static_cast<RecordType>(ReadU16(stream_, position_));
        const std::size_t size = ReadU16(stream_, position_ + 2);
        return Record{type, position_, {stream_.data() + position_ + kRecordHeader, size}};
    }
    /// Whether the next record is complete.
    bool IsWhole() const
    {
        const std::size_t rest = stream_.size() - std::min(position_, stream_.size());
        return rest >= kRecordHeader && rest - kRecordHeader >= ReadU16(stream_, position_ + 2);
    }
    std::size_t Position() const { return position_; }

private:
    std::string_view stream_;
    std::size_t position_;
};

/// A substream, as far as its records can be read.
struct Substream {
    std::size_t end = 0;  ///< after its EOF record, else after the last record that can be read
    bool isWhole = false; ///< it has a BOF and an EOF record
};
/// Reads the records of the substream at `begin`, with nested substreams (charts), up to `limit` at
/// most. Never throws.
Substream ReadSubstream(std::string_view stream, std::size_t begin, std::size_t limit);

/// The end of the substream whose BOF record is at `begin`: after its EOF record.
/// Throws Error(DamagedWorkbook) if BOF or EOF is missing.
std::size_t SubstreamEnd(std::string_view stream, std::size_t begin);

/// Appends a record. Data beyond `kMaxRecordSize` continues in CONTINUE records.
void AppendRecord(std::string& stream, RecordType type, std::string_view data);

} // namespace orrery::xls
