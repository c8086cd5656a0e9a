#include "engines/builtin/xls/look/sheet_reader.h"

#include "engines/builtin/xls/look/cell_reader.h"
#include "engines/builtin/xls/look/conditions/condition_reader.h"
#include "engines/builtin/xls/look/grid_reader.h"
#include "engines/builtin/xls/look/merge_reader.h"
#include "engines/builtin/xls/look/page_reader.h"
#include "engines/builtin/xls/look/print_names.h"
#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/look/records/look_records.h"
#include "engines/builtin/xls/look/sheet_styles.h"
#include "engines/builtin/xls/look/table_reader.h"

#include <optional>

namespace orrery::xls {
namespace {

/// Gives each record of a sheet to the reader that knows it.
class SheetReader {
public:
    SheetReader(book::SheetLook& look, LookSource& source)
        : look_(look), styles_(look, source.Formats()), cells_(look, source, styles_),
          grid_(look, styles_, source.Formats().Colors()), merges_(look),
          conditions_(look, source.Names(), source.Formats()),
          tables_(look, source.Formats().Colors().Theme())
    {
    }

    void Read(std::string_view stream, std::size_t begin)
    {
        LookRecordReader records(stream, begin);
        LookRecord record;
        while (records.Next(record))
            ReadOrLeaveOut(look_, NameOf(record.type), [&] { ReadRecord(record); });
        if (!records.IsWhole())
            LeaveOut(look_, "end of the sheet", {}, "the file ends before it");
        cells_.Finish();
        grid_.Finish();
        merges_.Finish();
        conditions_.Finish();
        tables_.Finish();
    }

private:
    void ReadRecord(const LookRecord& record)
    {
        if (cells_.Read(record) || grid_.Read(record))
            return;
        if (record.type == RecordType::MergeCells)
            merges_.Read(record.data);
        else if (!conditions_.Read(record) && !ReadPageRecord(record, look_.page))
            tables_.Read(record);
    }

    /// What is left out with a damaged record.
    static const char* NameOf(RecordType type)
    {
        switch (type) {
        case RecordType::ColumnInfo:
            return "columns";
        case RecordType::Row:
            return "row";
        case RecordType::MergeCells:
            return "merged cells";
        case RecordType::ConditionalFormats:
        case RecordType::ConditionalFormats12:
        case RecordType::ConditionalFormat:
        case RecordType::ConditionalFormat12:
        case RecordType::ConditionalFormatEx:
            return "conditional format";
        case RecordType::Header:
        case RecordType::Footer:
        case RecordType::HeaderFooter:
            return "header or footer";
        case RecordType::PageSettings:
            return "page set-up";
        case RecordType::Feature11:
        case RecordType::Feature12:
        case RecordType::List12:
            return "table";
        case RecordType::Window2:
        case RecordType::Pane:
            return "view";
        default:
            return "cell or setting";
        }
    }

    book::SheetLook& look_;
    SheetStyles styles_;
    CellReader cells_;
    GridReader grid_;
    MergeReader merges_;
    ConditionReader conditions_;
    TableReader tables_;
};

} // namespace

book::SheetLook ReadSheetLook(LookSource& source, std::size_t sheet)
{
    const auto& summary = source.Look().sheets.at(sheet);
    book::SheetLook look;
    look.name = summary.name;
    look.page = DefaultPage();
    if (summary.kind != book::SheetKind::Worksheet) {
        look.styles.push_back(source.Formats().Style(CellFormats::kDefaultCell));
        return look;
    }
    ReadPrintNames(source.Book(), sheet, look);
    const std::size_t begin = source.Book().Sheets()[sheet].Offset;
    SheetReader(look, source).Read(source.Stream(), begin);
    look.drawings = source.Drawings().Read(begin, look.leftOut);
    look.headerPictures = source.Drawings().ReadHeaders(begin, look.leftOut);
    if (source.Formats().Damaged() > 0)
        LeaveOut(look, "formats of the workbook", {}, "their records are damaged");
    return look;
}

} // namespace orrery::xls
