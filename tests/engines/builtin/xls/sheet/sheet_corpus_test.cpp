#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/sheet/sheet_bytes.h"
#include "places/places.h"
#include "xls/decoded_sheet.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace orrery::xls {
namespace {

using namespace test;

/// The undamaged workbooks.
std::vector<std::filesystem::path> CorpusWorkbooks()
{
    const std::filesystem::path folder = places::CorpusFolder() / "xls";
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(folder))
        for (const auto& entry : std::filesystem::directory_iterator(folder))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The workbook stream; a few files consist of nothing else.
std::string WorkbookStream(const std::filesystem::path& path)
{
    std::string bytes = ReadFile(path);
    if (bytes.starts_with("\x09\x08"))
        return bytes;
    const CompoundFile file(std::move(bytes));
    const auto stream = file.Find("Workbook");
    return stream ? file.ReadStream(*stream) : std::string();
}

/// Offsets of the sheets that are worksheets.
std::vector<std::size_t> Worksheets(const std::string& stream)
{
    std::vector<std::size_t> offsets;
    RecordReader reader(stream);
    for (auto record = reader.Next(); record && record->type != RecordType::Eof;
         record = reader.Next()) {
        if (record->type == RecordType::FilePass)
            return {}; // the rest of the stream cannot be read
        if (record->type != RecordType::BoundSheet)
            continue;
        const std::size_t offset = ReadU32(record->data, 0);
        if (ReadU16(stream, offset + kRecordHeader + 2) == 0x10)
            offsets.push_back(offset);
    }
    return offsets;
}

struct Tally {
    std::size_t sheets = 0;
    std::size_t clean = 0; // no faults before
    std::size_t cells = 0;
    std::size_t written = 0;
};

/// Writes cells into every sheet; the unwritten ones must be unchanged.
void CheckWrites(const std::shared_ptr<SheetText>& text, const DecodedSheet& before, Tally& tally)
{
    SheetCells cells(text);
    auto expected = before.cells;
    for (std::int32_t i = 0; i < 400; ++i) {
        const std::int32_t row = 2 + i / 20 + (i % 7 == 0 ? 30 : 0);
        const std::int32_t column = 1 + i % 20;
        if (text->IsPartOfArray({row, column}) || !cells.TakesValue(row, column))
            continue;
        cells.Set(row, column, static_cast<std::int16_t>(i));
        std::string value;
        AppendU32(value, static_cast<std::uint32_t>(i * 4 + 2));
        const auto old = before.cells.find({row - 1, column - 1});
        const std::uint16_t format =
            old != before.cells.end() ? old->second.format : text->FormatOf({row, column});
        expected[{row - 1, column - 1}] = {0x027E, format, value, "", ""};
        ++tally.written;
    }
    const bool recalculate = tally.sheets % 2 == 0;
    if (recalculate)
        for (auto& [address, cell] : expected)
            if (cell.type == 0x0006) {
                cell.value = std::string("\3\0\0\0\0\0\xFF\xFF", 8);
                cell.flags[0] = static_cast<char>(cell.flags[0] | 1);
            }
    const std::size_t offset = text->Offset() + 777;
    const std::string bytes = MakeSheet(*text, text->Bytes(), &cells, recalculate, {}, offset);
    const DecodedSheet after = DecodeSheet(bytes, offset);
    EXPECT_EQ(after.cells, expected);
    EXPECT_EQ(after.others, before.others);
    EXPECT_EQ(after.stringReferences, cells.StringReferences());
    if (before.faults.empty()) {
        EXPECT_EQ(after.faults, std::vector<std::string>());
        ++tally.clean;
    }
}

TEST(XlsSheetCorpus, EveryWorksheetIsIndexedAndWritten)
{
    const auto files = CorpusWorkbooks();
    if (files.empty()) {
        ASSERT_EQ(std::getenv("CI"), nullptr) << "no workbooks in " << places::CorpusFolder();
        GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }
    Tally tally;
    for (const auto& file : files) {
        const std::string stream = WorkbookStream(file);
        for (const std::size_t offset : Worksheets(stream)) {
            SCOPED_TRACE(file.filename().string() + ", " + std::to_string(offset));
            const std::size_t end = SubstreamEnd(stream, offset);
            const auto text =
                std::make_shared<SheetText>(stream.substr(offset, end - offset), offset);
            const DecodedSheet before = DecodeSheet(text->Bytes(), offset);
            EXPECT_EQ(MakeSheet(*text, text->Bytes(), nullptr, false, {}, offset), text->Bytes());
            if (before.faults.empty()) {
                EXPECT_EQ(
                    DecodeSheet(MakeSheet(*text, text->Bytes(), nullptr, false, {}, 99), 99).faults,
                    std::vector<std::string>());
            }
            CheckWrites(text, before, tally);
            ++tally.sheets;
            tally.cells += before.cells.size();
        }
    }
    EXPECT_GT(tally.sheets, 2 * files.size());
    EXPECT_GT(tally.clean, tally.sheets / 2);
    EXPECT_GT(tally.cells, 10000U);
    EXPECT_GT(tally.written, 300 * tally.sheets);
}

} // namespace
} // namespace orrery::xls
