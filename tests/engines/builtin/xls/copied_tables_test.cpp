#include "book/error.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"
#include "xls/built_workbook.h"
#include "xls/saved_book.h"
#include "xls/table_builder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using namespace test;
using book::AccessMode;
using orrery::test::SavedBook;
using testing::ElementsAre;
using testing::IsEmpty;

BuiltTable Entries(std::uint32_t id, std::string name)
{
    BuiltTable table{.source = 2, .id = id, .name = std::move(name)};
    table.columns = {{.id = 1, .nameInSource = "day", .title = "Tag", .element = "/plan/day"},
                     {.id = 2, .nameInSource = "hours", .title = "Zeit", .element = "/plan/hours"}};
    return table;
}

class CopiedTablesTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    /// Opens a workbook with these records on its sheet "Model" and copies that twice.
    void CopyTwice(const std::string& records)
    {
        workbook_.emplace(
            WorkbookFile(folder_ / "model.xls",
                         WorkbookStream({{"Model", WorksheetOf(RkOf(0, 0, 15, 7) + records)}})));
        auto& model = *workbook_->FindWorksheet("Model");
        model.CopyAfter(model);
        model.Next()->SetName("February");
        model.CopyAfter(*model.Next());
        model.Next()->Next()->SetName("March");
    }

    SavedBook Saved()
    {
        workbook_->SaveAs(folder_ / "saved.xls", AccessMode::NoChange);
        return SavedBook(folder_ / "saved.xls");
    }

    const std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        ("tables_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::optional<Workbook> workbook_;
};

std::vector<std::string> TablesOn(const SavedBook& book, std::string_view sheet)
{
    return SavedBook::Records(book.At(sheet), 0x872);
}

TEST_F(CopiedTablesTest, TheModelAloneStaysMappedToXml)
{
    const auto cell = MappedCell(1, "Owner");
    CopyTwice(TablesHeader(3) + TableOf(cell) + TableOf(Entries(2, "Entries")));
    const auto book = Saved();
    EXPECT_THAT(TablesOn(book, "Model"),
                ElementsAre(TableDataOf(cell), TableDataOf(Entries(2, "Entries"))));
    EXPECT_THAT(TablesOn(book, "February"),
                ElementsAre(TableDataOf(Unmapped(Entries(3, "Entries_2")))));
    EXPECT_THAT(TablesOn(book, "March"),
                ElementsAre(TableDataOf(Unmapped(Entries(4, "Entries_3")))));
    for (const auto& sheet : book.Sheets())
        EXPECT_EQ(sheet.cells.at({1, 1}).value, SavedBook::Value(7.0)) << sheet.name;
}

TEST_F(CopiedTablesTest, ASheetMayHaveMappedCellsAlone)
{
    CopyTwice(TablesHeader(2) + TableOf(MappedCell(1, "Owner")));
    const auto book = Saved();
    EXPECT_EQ(TablesOn(book, "Model").size(), 1U);
    EXPECT_THAT(TablesOn(book, "February"), IsEmpty());
    EXPECT_THAT(SavedBook::Records(book.At("February"), 0x871), IsEmpty());
}

TEST_F(CopiedTablesTest, ASheetWithADamagedMappingCannotBeCopied)
{
    const auto data = TableDataOf(Entries(1, "Entries"));
    try {
        CopyTwice(RecordOf(RecordType::Feature11, data.substr(0, data.size() - 1)));
        FAIL() << "was copied";
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::SheetNotCopied);
        EXPECT_EQ(error.Subject(), "Model");
        EXPECT_EQ(error.Cause(), "the XML mapping of one of its tables is damaged");
    }
    EXPECT_EQ(TablesOn(Saved(), "Model").size(), 1U);
}

} // namespace
} // namespace orrery::xls
