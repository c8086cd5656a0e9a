#include "engines/builtin/xls/look/look.h"

#include "book/error.h"
#include "places/places.h"
#include "util/error.h"
#include "util/scratch_folder.h"
#include "xls/built_workbook.h"
#include "xls/table_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls::test {
namespace {

std::filesystem::path DataFile(const char* name)
{
    return places::SourceFolder() / "tests/engines/builtin/xls/data" / name;
}

TEST(OpenLookTest, ReadsAWorkbook)
{
    const auto view = OpenLook(DataFile("contract.xls"));
    ASSERT_FALSE(view->Workbook().sheets.empty());
    EXPECT_FALSE(view->Sheet(0).cells.empty());
    EXPECT_EQ(&view->Sheet(0), &view->Sheet(0)); // read once
}

TEST(OpenLookTest, ReadsAnEncryptedWorkbook)
{
    EXPECT_FALSE(OpenLook(DataFile("encrypted_libreoffice.xls"))->Workbook().sheets.empty());
}

book::ErrorKind KindOfError(const std::filesystem::path& path)
{
    try {
        OpenLook(path);
    }
    catch (const util::Error& error) {
        EXPECT_FALSE(error.Subject().empty());
        for (const auto kind : {book::ErrorKind::NotAWorkbook, book::ErrorKind::DamagedWorkbook,
                                book::ErrorKind::OldBinaryFormat}) {
            if (error.Kind() == kind)
                return kind;
        }
    }
    return book::ErrorKind::ApplicationFailure;
}

TEST(OpenLookTest, OtherFilesAreErrors)
{
    const testing_support::ScratchFolder folder;
    util::ReplaceFile(folder.Path() / "text.xls", "no workbook");
    EXPECT_EQ(KindOfError(folder.Path() / "text.xls"), book::ErrorKind::NotAWorkbook);
    const auto old = WorkbookFile(folder.Path() / "old.xls", BofOf(5, 0x0500) + EofRecord());
    EXPECT_EQ(KindOfError(old), book::ErrorKind::OldBinaryFormat);
    const auto empty = WorkbookFile(folder.Path() / "empty.xls", BofOf(5) + EofRecord());
    EXPECT_EQ(KindOfError(empty), book::ErrorKind::DamagedWorkbook);
}

/// LIST12 with the style of a table, which shows stripes of rows and its first column.
std::string StyleOfTable(std::uint32_t id, std::string_view name)
{
    std::string data = FutureHeader(RecordType::List12) + Numbers({1});
    AppendU32(data, id);
    AppendU16(data, 0x0005);
    AppendUnicodeString(data, name);
    return RecordOf(RecordType::List12, data);
}

TEST(OpenLookTest, ReadsTables)
{
    const testing_support::ScratchFolder folder;
    BuiltTable table{.name = "Dates"};
    table.columns.resize(3);
    const auto stream =
        WorkbookStream({{"A", SheetOf(LabelSstOf(2, 1, 15, 0) + LabelSstOf(2, 3, 15, 1) +
                                      TableOf(table) + StyleOfTable(1, "TableStyleMedium2"))}},
                       TextTableOf({"Day", "Name"}, 2));
    const auto view = OpenLook(WorkbookFile(folder.Path() / "table.xls", stream));
    const auto& look = view->Sheet(0);
    ASSERT_EQ(look.tables.size(), 1U);
    EXPECT_EQ(look.tables[0].name, "Dates");
    EXPECT_EQ(look.tables[0].range, (book::CellRange{{3, 2}, {10, 4}}));
    EXPECT_EQ(look.tables[0].headerRows, 1);
    EXPECT_TRUE(look.tables[0].showsRowStripes && look.tables[0].showsFirstColumn);
    EXPECT_FALSE(look.tables[0].showsColumnStripes || look.tables[0].showsLastColumn);
    EXPECT_FALSE(look.tables[0].style.parts.empty());
    EXPECT_TRUE(look.leftOut.empty());
    EXPECT_EQ(look.tables[0].columns, (std::vector<std::string>{"Day", "", "Name"}));
}

} // namespace
} // namespace orrery::xls::test
