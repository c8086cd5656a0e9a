#include "engines/builtin/xls/look/look_source.h"

#include "engines/builtin/xls/formula_text/formula_text.h"
#include "engines/builtin/xls/look/print_names.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/records/look_records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <utility>

namespace orrery::xls {
namespace {

/// Of BOUNDSHEET. [MS-XLS] 2.4.28
constexpr std::uint8_t kMacroType = 1;
constexpr std::uint8_t kChartType = 2;
constexpr std::uint8_t kModuleType = 6;

/// Whether what is stored as a worksheet is a dialog: its properties, before the cells, say so.
/// [MS-XLS] 2.4.351
bool IsDialog(std::string_view stream, std::size_t begin)
{
    constexpr int kMostRecords = 64;
    constexpr std::uint16_t kDialog = 0x0010;
    LookRecordReader records(stream, begin);
    LookRecord record;
    for (int i = 0; i < kMostRecords && records.Next(record); ++i) {
        if (record.type == RecordType::SheetProperties)
            return record.data.size() >= 2 && (ReadU16(record.data, 0) & kDialog) != 0;
        if (record.type == RecordType::Dimensions)
            return false;
    }
    return false;
}

book::SheetKind KindOf(std::string_view stream, const SheetEntry& entry)
{
    using enum book::SheetKind;
    switch (entry.Type) {
    case kMacroType:
    case kModuleType:
        return MacroSheet;
    case kChartType:
        return ChartSheet;
    default:
        return IsDialog(stream, entry.Offset) ? Dialog : Worksheet;
    }
}

book::SheetState StateOf(const SheetEntry& entry)
{
    using enum book::SheetState;
    const int state = entry.State & 3;
    return state == 0 ? Visible : state == 1 ? Hidden : VeryHidden;
}

} // namespace

LookSource::LookSource(std::string stream)
    : stream_(std::move(stream)), globals_(stream_), names_(globals_),
      drawings_(globals_, names_, StylesOfDrawings())
{
    ReadRecords();
    look_.normalFont = formats_.NormalFont();
    look_.activeSheet = globals_.ActiveSheet();
    ReadSheets();
    ReadNames();
}

/// The formats are read by the time that they are asked for.
DrawingStyles LookSource::StylesOfDrawings() const
{
    return {
        [this](std::uint32_t index) { return formats_.Colors().Indexed(index, ColorUse::Line); },
        [this](std::size_t index) { return formats_.Font(index); },
        [this](std::uint16_t number) { return formats_.NumberFormat(number); }};
}

void LookSource::ReadRecords()
{
    LookRecordReader records(stream_, 0);
    LookRecord record;
    std::string joined;
    while (records.Next(record)) {
        if (record.type == RecordType::DateMode && !record.data.empty())
            look_.dateSystem =
                record.data[0] != 0 ? book::DateSystem::From1904 : book::DateSystem::From1900;
        else if (record.type != RecordType::Sst && record.type != RecordType::MsoDrawingGroup)
            formats_.Add(static_cast<std::uint16_t>(record.type), record.Whole(joined));
    }
    formats_.Finish();
}

void LookSource::ReadSheets()
{
    for (const auto& entry : globals_.Sheets())
        look_.sheets.push_back({entry.Name, KindOf(stream_, entry), StateOf(entry)});
}

void LookSource::ReadNames()
{
    const auto& entries = globals_.Names();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto name = names_.Name(static_cast<std::uint32_t>(i + 1));
        const NameFormula formula = FormulaOf(entries[i], stream_);
        if (!name || entries[i].IsMacro || formula.tokens.empty())
            continue;
        auto text = FormulaText(formula.tokens, formula.extra, {names_});
        if (!text)
            continue;
        std::optional<std::size_t> sheet;
        if (entries[i].Sheet > 0)
            sheet = entries[i].Sheet - std::size_t{1};
        if (!sheet || *sheet < look_.sheets.size())
            look_.names.push_back({*name, sheet, std::move(*text)});
    }
}

const SharedTexts& LookSource::Texts()
{
    if (!texts_)
        texts_.emplace(globals_.StringsOnly().In(stream_), formats_);
    return *texts_;
}

} // namespace orrery::xls
