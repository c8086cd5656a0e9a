#include "book/error.h"
#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/records/shared_strings.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "xls/art_builder.h"
#include "xls/built_workbook.h"
#include "xls/saved_book.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <optional>

namespace orrery::xls {
namespace {

using namespace test;
using book::AccessMode;
using book::CellMember;
using book::CellValue;
using book::ErrorKind;
using orrery::test::SavedBook;
using testing::HasSubstr;

std::optional<util::Error> Failure(const std::function<void()>& call)
{
    try {
        call();
    }
    catch (const util::Error& error) {
        return error;
    }
    return std::nullopt;
}

/// A table of two strings that are longer than its record.
std::string CutTextTable()
{
    auto table = TextTableOf({"one", "two"}, 2);
    PutU16(table, kRecordHeader + 8, 4000);
    return table;
}

class XlsFailedCallsTest : public testing::Test {
protected:
    /// Opens a workbook with one sheet "Model".
    Workbook& Open(std::string_view records, std::string_view globals = {})
    {
        WorkbookFile(source_, WorkbookStream({{"Model", WorksheetOf(records)}}, globals));
        return workbook_.emplace(source_);
    }
    book::Worksheet& Model() { return *workbook_->FindWorksheet("Model"); }
    void SetNumber(book::Worksheet& sheet, std::int16_t number)
    {
        sheet.SetCell(1, 1, CellValue(number), CellMember::Value);
    }
    /// Whether a failure is damage and names the file.
    bool NamesTheFile(const std::optional<util::Error>& failure) const
    {
        return failure && failure->Kind() == ErrorKind::DamagedWorkbook &&
               failure->Subject() == util::FromPath(source_);
    }

    testing_support::ScratchFolder folder_;
    std::filesystem::path source_ = folder_ / "source.xls";
    std::filesystem::path target_ = folder_ / "target.xls";
    std::optional<Workbook> workbook_;
};

TEST(XlsFailedReadTest, ADamagedStringTableStaysUnread)
{
    const auto table = CutTextTable();
    SharedStrings strings(table);
    EXPECT_THROW(strings.IndexOf("text"), util::Error);
    EXPECT_THROW(strings.IndexOf("text"), util::Error) << "the second time as the first";
    EXPECT_FALSE(strings.Changed());
    EXPECT_THROW(strings.ToRecords(1, 0), util::Error);
}

TEST_F(XlsFailedCallsTest, ATextThatCannotBeAddedChangesNothing)
{
    auto& book = Open({}, CutTextTable());
    const auto text = [&] {
        Model().SetCell(1, 1, CellValue(std::string("text")), CellMember::Value);
    };
    EXPECT_TRUE(NamesTheFile(Failure(text)));
    Model().SetName("Renamed");
    EXPECT_TRUE(NamesTheFile(Failure([&] { book.SaveAs(target_, AccessMode::NoChange); })));
    EXPECT_FALSE(std::filesystem::exists(target_));
    EXPECT_EQ(folder_.Entries(), 1) << "nothing is left beside it";
}

TEST_F(XlsFailedCallsTest, TextsThatTheTableDoesNotCountStayInTheirCells)
{
    auto& book = Open(RowOf(0, 0, 2) + LabelSstOf(0, 0, 15, 0) + LabelSstOf(0, 1, 15, 1),
                      TextTableOf({"col1", "col2"}, 0));
    Model().SetCell(2, 1, CellValue(std::string("January")), CellMember::Value);
    book.SaveAs(target_, AccessMode::NoChange);
    const SavedBook saved(target_);
    const auto& cells = saved.At("Model").cells;
    EXPECT_EQ(cells.at({1, 1}).value, SavedBook::Value("col1"));
    EXPECT_EQ(cells.at({1, 2}).value, SavedBook::Value("col2"));
    EXPECT_EQ(cells.at({2, 1}).value, SavedBook::Value("January"));
}

TEST_F(XlsFailedCallsTest, ATextThatACellUsesAndTheTableLacksIsNotReplaced)
{
    Open(RowOf(0, 0, 1) + LabelSstOf(0, 0, 15, 1), TextTableOf({"one"}, 1));
    const auto failure = Failure(
        [&] { Model().SetCell(2, 1, CellValue(std::string("January")), CellMember::Value); });
    ASSERT_TRUE(NamesTheFile(failure));
    EXPECT_EQ(failure->Cause(), "its cells use 2 shared texts, and there are 1");
}

TEST_F(XlsFailedCallsTest, ADamagedFormatIsReportedEachTime)
{
    auto& book = Open({}, RecordOf(RecordType::Xf, "ab"));
    EXPECT_TRUE(NamesTheFile(Failure([&] { SetNumber(Model(), 1); })));
    EXPECT_TRUE(NamesTheFile(Failure([&] { SetNumber(Model(), 1); })));
    book.SaveAs(target_, AccessMode::NoChange);
    EXPECT_EQ(SavedStream(target_), SavedStream(source_));
}

TEST_F(XlsFailedCallsTest, ASheetThatCannotBeCopiedIsFilledAndSaved)
{
    const auto damaged = RecordOf(RecordType::MsoDrawing, ArtOf(0xF002, "no container"));
    auto& book = Open(damaged);
    const auto failure = Failure([&] { Model().CopyAfter(Model()); });
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->Kind(), ErrorKind::SheetNotCopied);
    EXPECT_EQ(failure->Subject(), "Model");
    SetNumber(Model(), 7);
    book.SaveAs(target_, AccessMode::NoChange);
    const SavedBook saved(target_);
    EXPECT_EQ(saved.Names(), std::vector<std::string>{"Model"});
    EXPECT_EQ(std::get<double>(saved.Sheets()[0].cells.at({1, 1}).value), 7);
}

TEST_F(XlsFailedCallsTest, ASheetIsCopiedWithADrawingOfVersion0)
{
    const auto shapes = ArtOf(0xF003, ShapeOf(0x400) + ShapeOf(0x401));
    const auto art = ArtOf(0xF002, ArtOf(0xF008, LongNumbers({2, 0x401}), 1) + shapes);
    const auto group = GroupOf({0x402, 2, 2, 1, 1, 2});
    auto& book =
        Open(RecordOf(RecordType::MsoDrawing, art), RecordOf(RecordType::MsoDrawingGroup, group));
    Model().CopyAfter(Model());
    book.SaveAs(target_, AccessMode::NoChange);
    const SavedBook saved(target_);
    const auto model = FindDrawings(saved.At("Model").bytes);
    const auto copy = FindDrawings(saved.At("Model (2)").bytes);
    ASSERT_EQ(model.drawings.size(), 1U);
    ASSERT_EQ(copy.drawings.size(), 1U);
    EXPECT_NE(copy.drawings[0].Id(), model.drawings[0].Id());
    ASSERT_EQ(copy.drawings[0].shapes.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_NE(copy.drawings[0].shapes[i].value, model.drawings[0].shapes[i].value);
}

TEST_F(XlsFailedCallsTest, AControlStreamThatIsAStorageHasNoControls)
{
    const auto object =
        RecordOf(RecordType::Obj, Numbers({0x15, 0x12, 8, 1, 0, 0, 0, 0, 0, 0, 0}) +
                                      Numbers({7, 2, 0xFFFF, 8, 2, 0x31, 9, 26, 12, 5, 0, 0}) +
                                      std::string("\x02\0\0\0\0\0", 6) + LongNumbers({0, 2, 0}) +
                                      Numbers({0, 0}));
    WorkbookFile(source_, WorkbookStream({{"Model", WorksheetOf(object)}}),
                 {Storage(u"Ctls", {Stream(u"in", "bytes")})});
    Workbook book(source_);
    auto& model = *book.FindWorksheet("Model");
    model.CopyAfter(model);
    book.SaveAs(target_, AccessMode::NoChange);
    EXPECT_EQ(SavedBook(target_).Names().size(), 2U);
}

} // namespace
} // namespace orrery::xls
