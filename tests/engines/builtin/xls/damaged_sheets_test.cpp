#include "book/error.h"
#include "engines/builtin/xls/sheet/template_sheet.h"
#include "engines/builtin/xls/workbook.h"
#include "util/error.h"
#include "util/paths.h"
#include "xls/built_workbook.h"
#include "xls/saved_book.h"

#include <functional>
#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;
using book::AccessMode;
using book::CellMember;
using book::CellValue;
using book::ErrorKind;
using orrery::test::SavedBook;

const std::string kLongRecord = [] {
    std::string record = Numbers({0x0FFF, 9000});
    return record + std::string(9000, 'x');
}();
const std::string kLongBegin =
    Numbers({0x0809, 9000, 0x0600, 0x10}) + std::string(8996, '\0') + EofRecord();
/// A hyperlink record that is too short.
const std::string kCutLink = RecordOf(RecordType::Hyperlink, std::string(20, 'x'));
/// MULBLANK whose last column does not match its formats.
const std::string kCutCells = RecordOf(RecordType::MulBlank, Numbers({0, 0, 15, 15, 7}));
const std::string kWithoutEnd = BofOf(0x10) + BlankOf(0, 0, 15);
const std::string kPastTheEnd = BofOf(0x10) + BlankOf(0, 0, 15) + Numbers({0x0201, 4000}) + "abc";

class XlsDamagedStreamTest : public testing::Test {
protected:
    /// The kind of error that a call throws for the file, or `WrongUsage`.
    std::optional<util::AnyErrorKind> KindOf(const std::function<void()>& call) const
    {
        try {
            call();
        }
        catch (const util::Error& error) {
            const bool isDamage = error.Kind() == ErrorKind::DamagedWorkbook;
            EXPECT_TRUE(!isDamage || error.Subject() == util::FromPath(source_)) << error.what();
            return error.Kind();
        }
        return std::nullopt;
    }

    testing_support::ScratchFolder folder_;
    std::filesystem::path source_ = folder_ / "source.xls";
    std::filesystem::path target_ = folder_ / "target.xls";
};

struct DamagedSheetCase {
    const char* name;
    std::string bytes;
};
std::string DamagedSheetName(const testing::TestParamInfo<DamagedSheetCase>& info)
{
    return info.param.name;
}
class XlsDamagedSheetTest : public XlsDamagedStreamTest,
                            public testing::WithParamInterface<DamagedSheetCase> {};
TEST_P(XlsDamagedSheetTest, StaysAsItIsIfNothingIsWritten)
{
    const auto& damaged = GetParam().bytes;
    WorkbookFile(source_, WorkbookStream({{"Model", WorksheetOf("")},
                                          {"Other", damaged},
                                          {"Last", WorksheetOf(BlankOf(1, 1, 15))}}));
    Workbook book(source_);
    auto& model = *book.FindWorksheet("Model");
    model.SetName("January");
    model.CopyAfter(model);
    model.Next()->SetCell(3, 3, CellValue(std::int16_t{5}), CellMember::Value);
    book.SaveAs(target_, AccessMode::NoChange);

    const auto stream = SavedStream(target_);
    const Globals globals(stream);
    ASSERT_EQ(globals.Sheets().size(), 4U);
    const auto begin = globals.Sheets()[2].Offset;
    EXPECT_EQ(stream.substr(begin, globals.Sheets()[3].Offset - begin), damaged);
    for (const std::size_t sheet : {0U, 1U})
        EXPECT_LE(SubstreamEnd(stream, globals.Sheets()[sheet].Offset),
                  globals.Sheets()[sheet + 1].Offset);
    EXPECT_EQ(stream.substr(globals.Sheets()[3].Offset), WorksheetOf(BlankOf(1, 1, 15)));
}

INSTANTIATE_TEST_SUITE_P(Sheets, XlsDamagedSheetTest,
                         testing::Values(DamagedSheetCase{"WithoutEnd", kWithoutEnd},
                                         DamagedSheetCase{"LongBegin", kLongBegin},
                                         DamagedSheetCase{"LongRecord", WorksheetOf(kLongRecord)},
                                         DamagedSheetCase{"CutLink", WorksheetOf(kCutLink)},
                                         DamagedSheetCase{"CutCells", WorksheetOf(kCutCells)}),
                         DamagedSheetName);

class XlsDamagedModelTest : public XlsDamagedSheetTest {};
TEST_P(XlsDamagedModelTest, IsNeitherRenamedNorCopiedNorWritten)
{
    const auto before = WorkbookStream({{"Model", GetParam().bytes}, {"Good", WorksheetOf("")}});
    WorkbookFile(source_, before);
    Workbook book(source_);
    auto& model = *book.FindWorksheet("Model");
    EXPECT_EQ(KindOf([&] { model.SetName("January"); }), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(KindOf([&] { model.CopyAfter(model); }), ErrorKind::DamagedWorkbook);
    const auto write = [&] { model.SetCell(1, 1, CellValue(std::int16_t{5}), CellMember::Value); };
    EXPECT_EQ(KindOf(write), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(model.Name(), "Model");
    EXPECT_EQ(model.Next()->Name(), "Good");
    book.SaveAs(target_, AccessMode::NoChange);
    EXPECT_EQ(SavedStream(target_), before);
}

INSTANTIATE_TEST_SUITE_P(Sheets, XlsDamagedModelTest,
                         testing::Values(DamagedSheetCase{"WithoutEnd", kWithoutEnd},
                                         DamagedSheetCase{"LongBegin", kLongBegin},
                                         DamagedSheetCase{"LongRecord", WorksheetOf(kLongRecord)},
                                         DamagedSheetCase{"CutCells", WorksheetOf(kCutCells)}),
                         DamagedSheetName);

TEST_F(XlsDamagedStreamTest, ASheetWithoutEndEndsWhereTheNextBegins)
{
    WorkbookFile(source_, WorkbookStream({{"Cut", kWithoutEnd}, {"Model", WorksheetOf("")}}));
    Workbook book(source_);
    auto& model = *book.FindWorksheet("Model");
    model.CopyAfter(model);
    model.Next()->SetCell(1, 1, CellValue(std::string("text")), CellMember::Value);
    book.SaveAs(target_, AccessMode::NoChange);
    const auto stream = SavedStream(target_);
    const Globals globals(stream);
    const auto begin = globals.Sheets().at(0).Offset;
    EXPECT_EQ(stream.substr(begin, globals.Sheets().at(1).Offset - begin), kWithoutEnd);
    EXPECT_EQ(stream.substr(globals.Sheets().at(1).Offset, WorksheetOf("").size()),
              WorksheetOf(""));
}

// Readers continue after such a sheet, where they would find another calendar's content.
TEST_F(XlsDamagedStreamTest, ASheetWithoutEndMustBeFollowedByASheet)
{
    for (const auto& damaged : {kWithoutEnd, kPastTheEnd}) {
        WorkbookFile(source_, WorkbookStream({{"Model", WorksheetOf("")}, {"Cut", damaged}}));
        EXPECT_EQ(KindOf([&] { Workbook book(source_); }), ErrorKind::DamagedWorkbook);
    }
    WorkbookFile(source_, WorkbookStream({{"Cut", kPastTheEnd}, {"Model", WorksheetOf("")}}));
    EXPECT_EQ(KindOf([&] { Workbook book(source_); }), ErrorKind::DamagedWorkbook);
}

TEST_F(XlsDamagedStreamTest, ACellWhoseFormatIsMissingIsNotWritten)
{
    const auto sheet = WorksheetOf(RowOf(0, 0, 1) + BlankOf(0, 0, 16));
    WorkbookFile(source_, WorkbookStream({{"Model", sheet}}));
    Workbook book(source_);
    auto& model = *book.FindWorksheet("Model");
    const auto write = [&](std::int32_t column) {
        model.SetCell(1, column, CellValue(std::int16_t{5}), CellMember::Value);
    };
    EXPECT_EQ(KindOf([&] { write(1); }), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(KindOf([&] { write(2); }), std::nullopt) << "the sixteenth is there";
}

// Thousands of entries for one sheet would make a file of many gigabytes.
TEST_F(XlsDamagedStreamTest, TwoEntriesOfOneSheetAreRefused)
{
    auto stream = WorkbookStream({{"A", WorksheetOf("")}, {"B", WorksheetOf("")}});
    const auto sheets = Globals(stream).Sheets();
    PutU32(stream, sheets[1].place.begin + kRecordHeader, sheets[0].Offset);
    WorkbookFile(source_, stream);
    EXPECT_EQ(KindOf([&] { Workbook book(source_); }), ErrorKind::DamagedWorkbook);
}

TEST_F(XlsDamagedStreamTest, AnOffsetThatLeadsNowhereIsRefused)
{
    for (const std::uint32_t offset : {0U, 21U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
        auto stream = WorkbookStream({{"A", WorksheetOf("")}, {"B", WorksheetOf("")}});
        PutU32(stream, Globals(stream).Sheets()[1].place.begin + kRecordHeader, offset);
        WorkbookFile(source_, stream);
        EXPECT_EQ(KindOf([&] { Workbook book(source_); }), ErrorKind::DamagedWorkbook) << offset;
    }
}

// INDEX comes after the first row: offsets must be written into it, nowhere else.
TEST_F(XlsDamagedStreamTest, TheIndexIsFoundWhereverItIs)
{
    const auto table = RowOf(0, 0, 1) + BlankOf(0, 0, 15);
    WorkbookFile(source_, WorkbookStream({{"Model", WorksheetOf(table + IndexOf(0, 1, {0}))}}));
    Workbook book(source_);
    book.FindWorksheet("Model")->SetCell(1, 1, CellValue(std::int16_t{5}), CellMember::Value);
    book.SaveAs(target_, AccessMode::NoChange);

    const SavedBook saved(target_);
    const auto& sheet = saved.At("Model");
    const auto offset = static_cast<std::uint32_t>(saved.Stream().find(sheet.bytes));
    EXPECT_EQ(sheet.bytes.substr(0, BofOf(0x10).size()), BofOf(0x10));
    const auto indexes = SavedBook::Records(sheet, 0x020B);
    ASSERT_EQ(indexes.size(), 1U);
    const auto block = ReadU32(indexes[0], kIndexHead);
    EXPECT_EQ(ReadU16(saved.Stream(), block), static_cast<std::uint16_t>(RecordType::DbCell));
    EXPECT_GT(block, offset);
}

TEST_F(XlsDamagedStreamTest, AShortSettingDoesNotMakeASheetUnreadable)
{
    const auto sheet = WorksheetOf(RecordOf(RecordType::SheetProperties, "a"));
    WorkbookFile(source_, WorkbookStream({{"Model", sheet}}));
    EXPECT_NE(Workbook(source_).FindWorksheet("Model"), nullptr);
}

TEST(XlsTemplateSheetTest, ReadsAsFarAsItCan)
{
    const auto stream = kWithoutEnd + LabelSstOf(1, 1, 15, 0) + WorksheetOf("");
    const std::size_t second = stream.size() - WorksheetOf("").size();
    TemplateSheet sheet(stream, 0, second, true);
    EXPECT_EQ(sheet.Bytes(), stream.substr(0, second));
    EXPECT_EQ(sheet.Strings().references, 1U);
    EXPECT_EQ(sheet.Strings().used, 1U);
    EXPECT_FALSE(sheet.IsIntact());
    EXPECT_FALSE(sheet.Facts().hasFormulas);
    EXPECT_TRUE(TemplateSheet(stream, second, stream.size(), true).IsIntact());
}

} // namespace
} // namespace orrery::xls
