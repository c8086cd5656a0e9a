#include "engines/builtin/xls/look/cell_reader.h"

#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/unicode.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kColumns = 256;
// What a look may take of memory, however small the file that asks for it.
constexpr std::size_t kMostCells = 4'000'000;
constexpr std::size_t kMostTextBytes = std::size_t{128} << 20U;

/// [MS-XLS] 2.5.217 (RkNumber)
double NumberOfRk(std::uint32_t rk)
{
    constexpr std::uint32_t kHundredths = 1;
    constexpr std::uint32_t kWhole = 2;
    const double number =
        (rk & kWhole) != 0
            ? static_cast<double>(std::bit_cast<std::int32_t>(rk) >> 2)
            : std::bit_cast<double>(std::uint64_t{rk & ~(kHundredths | kWhole)} << 32U);
    return (rk & kHundredths) != 0 ? number / 100 : number;
}

} // namespace

CellReader::CellReader(book::SheetLook& look, LookSource& source, SheetStyles& styles)
    : look_(look), source_(source), styles_(styles), formulas_(look, source.Names())
{
}

bool CellReader::Read(const LookRecord& record)
{
    ByteCursor cursor(record.data);
    switch (record.type) {
    case RecordType::Blank:
        Add(ReadPlace(cursor));
        return true;
    case RecordType::MulBlank:
        ReadBlanks(cursor);
        return true;
    case RecordType::Rk: {
        const auto place = ReadPlace(cursor);
        Set(place, NumberOfRk(cursor.U32()));
        return true;
    }
    case RecordType::MulRk:
        ReadNumbers(cursor);
        return true;
    case RecordType::Number: {
        const auto place = ReadPlace(cursor);
        Set(place, cursor.Double());
        return true;
    }
    case RecordType::LabelSst:
        ReadSharedText(cursor);
        return true;
    case RecordType::Label:
    case RecordType::RichString:
        ReadOwnText(record);
        return true;
    case RecordType::BoolErr:
        ReadBoolOrError(cursor);
        return true;
    case RecordType::Formula:
        ReadFormula(record);
        return true;
    case RecordType::String:
        if (auto* cell = formulas_.TakeTextCell())
            SetText(*cell, util::FromUtf16(ReadContinuedText(record, 0)));
        return true;
    default:
        return formulas_.ReadDefinition(record);
    }
}

CellReader::Place CellReader::ReadPlace(ByteCursor& cursor)
{
    const auto row = cursor.U16();
    const auto column = cursor.U16();
    return {row, column, cursor.U16()};
}

book::Cell* CellReader::Add(const Place& place)
{
    if (place.column >= kColumns)
        return nullptr;
    if (look_.cells.size() >= kMostCells) {
        if (!std::exchange(isFull_, true))
            LeaveOut(look_, "cells", {}, "the sheet has more than 4,000,000");
        return nullptr;
    }
    auto& cell = look_.cells.emplace_back();
    cell.address = {place.row + 1, place.column + 1};
    cell.style = styles_.IndexOf(place.format);
    return &cell;
}

void CellReader::Set(const Place& place, book::CellContent content)
{
    if (auto* cell = Add(place))
        cell->content = std::move(content);
}

void CellReader::ReadBlanks(ByteCursor cursor)
{
    const auto row = cursor.U16();
    for (auto column = cursor.U16(); column < kColumns && cursor.Left() >= 4; ++column)
        Add({row, column, cursor.U16()});
}

void CellReader::ReadNumbers(ByteCursor cursor)
{
    constexpr std::size_t kEntry = 6;
    const auto row = cursor.U16();
    for (auto column = cursor.U16(); column < kColumns && cursor.Left() >= kEntry + 2; ++column) {
        const auto format = cursor.U16();
        Set({row, column, format}, NumberOfRk(cursor.U32()));
    }
}

void CellReader::ReadSharedText(ByteCursor cursor)
{
    auto* cell = Add(ReadPlace(cursor));
    if (cell == nullptr)
        return;
    const auto index = cursor.U32();
    const auto* text = source_.Texts().Find(index);
    if (text == nullptr) {
        LeaveOut(look_, "text", book::FormatCellAddress(cell->address),
                 "it is not in the workbook's table of texts");
        return;
    }
    std::int32_t richText = -1;
    if (!text->runs.empty()) {
        const auto [place, isNew] =
            richTexts_.emplace(index, static_cast<std::int32_t>(look_.richTexts.size()));
        if (isNew)
            look_.richTexts.push_back(text->runs);
        richText = place->second;
    }
    SetText(*cell, *text, richText);
}

void CellReader::ReadOwnText(const LookRecord& record)
{
    ByteCursor cursor(record.data);
    auto* cell = Add(ReadPlace(cursor));
    if (cell == nullptr)
        return;
    const auto units = ReadContinuedText(record, cursor.Position());
    std::vector<FormatRun> runs;
    if (record.type == RecordType::RichString && record.more.empty()) {
        cursor.Skip(ReadUnicodeString(record.data, cursor.Position()).size);
        for (std::size_t count = cursor.U16(); count > 0; --count) {
            const auto begin = cursor.U16();
            runs.push_back({begin, cursor.U16()});
        }
    }
    const auto text = FormatText(units, runs, source_.Formats());
    std::int32_t richText = -1;
    if (!text.runs.empty()) {
        richText = static_cast<std::int32_t>(look_.richTexts.size());
        look_.richTexts.push_back(text.runs);
    }
    SetText(*cell, text, richText);
}

void CellReader::ReadBoolOrError(ByteCursor cursor)
{
    const auto place = ReadPlace(cursor);
    const auto value = cursor.U8();
    if (cursor.U8() != 0)
        Set(place, static_cast<book::CellError>(value));
    else
        Set(place, value != 0);
}

void CellReader::ReadFormula(const LookRecord& record)
{
    ByteCursor cursor(record.data);
    if (Add(ReadPlace(cursor)) != nullptr)
        formulas_.ReadFormula(record, cursor);
}

/// Whether there is room for so much more text.
bool CellReader::TakeText(std::size_t bytes)
{
    if (textBytes_ + bytes <= kMostTextBytes) {
        textBytes_ += bytes;
        return true;
    }
    LeaveOut(look_, "text", {}, "the sheet has more than 128 MiB of it");
    return false;
}

void CellReader::SetText(book::Cell& cell, std::string text)
{
    if (TakeText(text.size()))
        cell.content = std::move(text);
}

void CellReader::SetText(book::Cell& cell, const FormattedText& text, std::int32_t richText)
{
    if (!TakeText(text.text.size()))
        return;
    cell.content = text.text;
    cell.richText = richText;
}

void CellReader::Finish()
{
    formulas_.Finish();
    Order();
}

/// Of cells that are there twice, the later one counts.
void CellReader::Order()
{
    auto& cells = look_.cells;
    const auto rises = [](const book::Cell& a, const book::Cell& b) {
        return a.address < b.address;
    };
    const auto repeats = [&](const book::Cell& a, const book::Cell& b) { return !rises(a, b); };
    if (std::adjacent_find(cells.begin(), cells.end(), repeats) == cells.end())
        return;
    std::stable_sort(cells.begin(), cells.end(), rises);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i + 1 < cells.size() && cells[i].address == cells[i + 1].address)
            continue;
        if (kept != i)
            cells[kept] = std::move(cells[i]);
        ++kept;
    }
    cells.resize(kept);
}

} // namespace orrery::xls
