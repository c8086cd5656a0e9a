#include "engines/builtin/xls/workbook.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "places/places.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "xls/saved_book.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using book::AccessMode;
using book::CellMember;
using book::CellValue;
using book::ErrorKind;
using orrery::test::SavedBook;
using testing::ElementsAre;

const auto kEverything =
    places::SourceFolder() / "tests/engines/builtin/xls/data" / "everything.xls";

class XlsWorkbookTest : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_); }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    SavedBook Save()
    {
        workbook_.SaveAs(target_, AccessMode::NoChange);
        return SavedBook(target_);
    }

    book::Worksheet& Named(std::string_view name)
    {
        auto* sheet = workbook_.FindWorksheet(name);
        EXPECT_NE(sheet, nullptr) << name;
        return *sheet;
    }

    /// Renames "Model" and copies it twice.
    SavedBook SaveWithCopies()
    {
        auto& model = Named("Model");
        model.SetName("January");
        model.CopyAfter(model);
        model.Next()->SetName("February");
        model.CopyAfter(*model.Next());
        model.Next()->Next()->SetName("March");
        return Save();
    }

    std::optional<util::AnyErrorKind> KindOf(const std::function<void()>& call)
    {
        try {
            call();
        }
        catch (const util::Error& error) {
            return error.Kind();
        }
        return std::nullopt;
    }

    std::filesystem::path folder_ =
        std::filesystem::path(testing::TempDir()) /
        ("xls_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::path target_ = folder_ / "saved.xls";
    Workbook workbook_{kEverything};
};

/// The number of records of each type in a sheet.
std::map<std::uint16_t, int> TypesIn(const SavedBook::Sheet& sheet)
{
    std::map<std::uint16_t, int> types;
    RecordReader reader(sheet.bytes);
    while (const auto record = reader.Next())
        ++types[static_cast<std::uint16_t>(record->type)];
    return types;
}

/// The positions, from 0, of the sheets to which the formulas' references lead.
std::vector<int> SheetsNamedIn(const Globals& globals, std::string_view records)
{
    std::vector<int> sheets;
    for (const auto link : ReadFacts(records).sheets) {
        const auto span = globals.OwnSheets(link);
        sheets.push_back(span && span->first == span->last ? span->first : -1);
    }
    return sheets;
}

TEST_F(XlsWorkbookTest, SavesAnUnchangedWorkbookBitForBit)
{
    const CompoundFile original(util::ReadFile(kEverything).value());
    Save();
    const CompoundFile saved(util::ReadFile(target_).value());
    ASSERT_EQ(saved.Entries().size(), original.Entries().size());
    for (EntryId id = 0; id < original.Entries().size(); ++id) {
        EXPECT_EQ(saved.Entry(id).name, original.Entry(id).name);
        if (original.Entry(id).type == EntryType::Stream) {
            EXPECT_EQ(saved.ReadStream(id), original.ReadStream(id));
        }
    }
}

TEST_F(XlsWorkbookTest, RenamedBackIsTheTemplateAgain)
{
    Named("Model").SetName("Other name");
    Named("Other name").SetName("Model");
    EXPECT_EQ(Save().Stream(), SavedBook(kEverything).Stream());
}

TEST_F(XlsWorkbookTest, LeavesTheTemplateAlone)
{
    const auto before = util::ReadFile(kEverything);
    SaveWithCopies();
    EXPECT_EQ(util::ReadFile(kEverything), before);
}

TEST_F(XlsWorkbookTest, RenameChecksTheRules)
{
    EXPECT_EQ(KindOf([&] { Named("Model").SetName(""); }), ErrorKind::InvalidSheetName);
    EXPECT_EQ(KindOf([&] { Named("Model").SetName("a/b"); }), ErrorKind::InvalidSheetName);
    EXPECT_EQ(KindOf([&] { Named("Model").SetName("history"); }), ErrorKind::InvalidSheetName);
    EXPECT_EQ(KindOf([&] { Named("Model").SetName("oTHER"); }), ErrorKind::SheetNameTaken);
    Named("Model").SetName("MODEL");
    EXPECT_EQ(Named("model").Name(), "MODEL");
}

TEST_F(XlsWorkbookTest, RenameChangesTheNameAndLinksToIt)
{
    Named("Model").SetName("M\xC3\xA4rz");
    const auto saved = Save();
    EXPECT_THAT(saved.Names(), ElementsAre("M\xC3\xA4rz", "Other", "Third Sheet"));
    const SavedBook original(kEverything);
    EXPECT_EQ(saved.Sheets()[1].bytes.size(), original.Sheets()[1].bytes.size())
        << "formulas name sheets by number";
    const auto links = SavedBook::Records(saved.Sheets()[0], 0x01B8);
    ASSERT_FALSE(links.empty());
    std::string place;
    for (const char c : std::string("'M\xE4rz'!B5"))
        place += {c, '\0'};
    const auto isNamed = [&](const auto& link) { return link.find(place) != link.npos; };
    EXPECT_EQ(std::count_if(links.begin(), links.end(), isNamed), 1);
}

TEST_F(XlsWorkbookTest, CopyIsNamedAndPlacedAsInExcel)
{
    auto& model = Named("Model");
    model.CopyAfter(model);
    model.CopyAfter(*model.Next());
    EXPECT_THAT(Save().Names(),
                ElementsAre("Model", "Model (2)", "Model (3)", "Other", "Third Sheet"));
}

TEST_F(XlsWorkbookTest, CopyOwnsAsManyRecordsOfEachKindAsItsModel)
{
    const auto saved = SaveWithCopies();
    const auto model = TypesIn(saved.At("January"));
    EXPECT_GT(model.size(), 40U);
    EXPECT_EQ(TypesIn(saved.At("February")), model);
    EXPECT_EQ(TypesIn(saved.At("March")), model);
}

TEST_F(XlsWorkbookTest, CopyRefersToItself)
{
    const auto saved = SaveWithCopies();
    const Globals globals(saved.Stream());
    const auto atJanuary = SheetsNamedIn(globals, saved.At("January").bytes);
    const auto atFebruary = SheetsNamedIn(globals, saved.At("February").bytes);
    EXPECT_THAT(atJanuary, testing::Contains(0));
    EXPECT_THAT(atJanuary, testing::Not(testing::Contains(1)));
    EXPECT_THAT(atFebruary, testing::Contains(1));
    EXPECT_THAT(atFebruary, testing::Not(testing::Contains(0)));
    EXPECT_THAT(atFebruary, testing::Contains(3)) << "Other stays Other";
    EXPECT_THAT(atFebruary, testing::Contains(-1)) << "a range of sheets";
}

TEST_F(XlsWorkbookTest, CopyHasItsOwnNames)
{
    const auto saved = SaveWithCopies();
    const Globals globals(saved.Stream());
    std::map<std::pair<std::string, int>, std::vector<int>> names;
    for (const auto& name : globals.Names())
        names[{name.Key, name.Sheet}] = SheetsNamedIn(globals, name.place.In(saved.Stream()));
    const std::string printArea = "\x01\x06";
    for (const int sheet : {1, 2, 3}) {
        EXPECT_THAT((names[{printArea, sheet}]), ElementsAre(sheet - 1));
        EXPECT_THAT((names[{"ownname", sheet}]), ElementsAre(sheet - 1));
    }
    EXPECT_THAT((names[{"workbookname", 0}]), ElementsAre(0));
    EXPECT_THAT((names[{"workbookname", 2}]), ElementsAre(1));
    EXPECT_THAT((names[{"workbookname", 3}]), ElementsAre(2));
    EXPECT_FALSE((names.contains({"elsewhere", 2})));
    EXPECT_THAT((names[{printArea, 5}]), ElementsAre(4)) << "of the sheet behind the copies";
}

TEST_F(XlsWorkbookTest, DrawingsOfCopiesHaveIdsOfTheirOwn)
{
    const auto saved = SaveWithCopies();
    std::set<std::uint32_t> drawings;
    std::set<std::uint32_t> shapes;
    std::size_t drawingCount = 0;
    std::size_t shapeCount = 0;
    for (const auto& sheet : saved.Sheets()) {
        const auto found = FindDrawings(sheet.bytes);
        EXPECT_TRUE(found.understood);
        for (const auto& drawing : found.drawings) {
            drawings.insert(drawing.Id());
            ++drawingCount;
            shapeCount += drawing.shapes.size();
            for (const auto& shape : drawing.shapes)
                shapes.insert(shape.value);
        }
    }
    EXPECT_GE(drawingCount, 3U);
    EXPECT_EQ(drawings.size(), drawingCount);
    EXPECT_EQ(shapes.size(), shapeCount);
}

TEST_F(XlsWorkbookTest, OneSheetIsSelectedBesideCopies)
{
    const auto saved = SaveWithCopies();
    std::vector<bool> selected;
    for (const auto& sheet : saved.Sheets())
        selected.push_back((SavedBook::Records(sheet, 0x023E).at(0).at(1) & 2) != 0);
    EXPECT_THAT(selected, ElementsAre(true, false, false, false, false));
}

TEST_F(XlsWorkbookTest, CopyIncludesCellsWrittenBefore)
{
    auto& model = Named("Model");
    model.SetCell(30, 2, CellValue(std::string("before")), CellMember::Value);
    model.CopyAfter(model);
    model.SetCell(30, 3, CellValue(std::int16_t{7}), CellMember::Value);
    const auto saved = Save();
    const auto& copy = saved.At("Model (2)");
    EXPECT_EQ(copy.cells.at({30, 2}).value, SavedBook::Value("before"));
    EXPECT_FALSE(copy.cells.contains({30, 3}));
    EXPECT_EQ(saved.At("Model").cells.at({30, 3}).value, SavedBook::Value(7.0));
}

TEST_F(XlsWorkbookTest, StringsAreSharedAndCounted)
{
    const SavedBook original(kEverything);
    const auto count = [](const SavedBook& book, std::size_t at) {
        return static_cast<unsigned char>(book.GlobalRecords(0x00FC).at(0).at(at));
    };
    Named("Other").SetCell(40, 1, CellValue(std::string("twice")), CellMember::Value);
    Named("Third Sheet").SetCell(40, 1, CellValue(std::string("twice")), CellMember::Value);
    const auto saved = Save();
    EXPECT_EQ(count(saved, 0), count(original, 0) + 2) << "references";
    EXPECT_EQ(count(saved, 4), count(original, 4) + 1) << "texts";
}

TEST_F(XlsWorkbookTest, NoStoredResultOutlivesAWrite)
{
    Named("Model").SetCell(1, 2, CellValue(std::int16_t{100}), CellMember::Value);
    const auto saved = Save();
    for (const auto* name : {"Model", "Other"}) { // Other reads Model
        const auto formulas = SavedBook::Records(saved.At(name), 0x0006);
        EXPECT_FALSE(formulas.empty());
        for (const auto& formula : formulas) {
            EXPECT_EQ(formula.substr(12, 2), "\xFF\xFF") << "no number";
            EXPECT_EQ(formula.at(6), '\x03') << "an empty text";
            EXPECT_EQ(formula.at(14) & 1, 1) << "to be computed";
        }
    }
}

TEST_F(XlsWorkbookTest, WritingOneSheetLeavesTheOthers)
{
    Named("Third Sheet").SetCell(9, 1, CellValue(std::int16_t{7}), CellMember::Value);
    const auto saved = Save();
    const SavedBook original(kEverything);
    EXPECT_EQ(saved.At("Model").bytes.size(), original.At("Model").bytes.size());
    EXPECT_EQ(saved.At("Other").cells.size(), original.At("Other").cells.size());
}

TEST_F(XlsWorkbookTest, BytesAfterTheLastSheetStayAtTheEnd)
{
    const auto padded = folder_ / "padded.xls";
    const CompoundFile original(util::ReadFile(kEverything).value());
    const auto entry = original.Find("Workbook").value();
    const std::string padding(100, '\0');
    CompoundWriter writer(original);
    writer.ReplaceStream(entry, original.ReadStream(entry) + padding);
    writer.SaveTo(padded);

    Workbook workbook(padded);
    auto* last = workbook.FindWorksheet("Third Sheet");
    last->CopyAfter(*last);
    workbook.SaveAs(target_, AccessMode::NoChange);
    const SavedBook saved(target_);
    EXPECT_TRUE(saved.Stream().ends_with(saved.Sheets().back().bytes + padding));
}

TEST_F(XlsWorkbookTest, TheIndexOfStringsMovesWithThem)
{
    Named("Model").SetName("A name of another length");
    const auto stream = Save().Stream();
    RecordReader reader(stream);
    std::size_t texts = 0;
    for (auto record = reader.Next(); record; record = reader.Next()) {
        if (record->type == RecordType::Sst)
            texts = record->begin;
        if (record->type == RecordType::ExtSst) {
            EXPECT_EQ(ReadU32(record->data, 2), texts + 12) << "of the first text";
            return;
        }
    }
    FAIL() << "no index";
}

TEST_F(XlsWorkbookTest, SavesMoreThanOnce)
{
    const auto first = SaveWithCopies();
    const auto second = Save();
    EXPECT_EQ(first.Stream(), second.Stream());
    Named("March").SetCell(1, 1, CellValue(std::string("more")), CellMember::Value);
    EXPECT_EQ(Save().At("March").cells.at({1, 1}).value, SavedBook::Value("more"));
}

TEST_F(XlsWorkbookTest, RefusesCellsThatItCannotWrite)
{
    auto& sheet = Named("Other");
    const auto write = [&](std::int32_t row, std::int32_t column) {
        return KindOf(
            [&] { sheet.SetCell(row, column, CellValue(std::int16_t{1}), CellMember::Value); });
    };
    EXPECT_EQ(write(65537, 1), ErrorKind::CellOutsideSheet);
    EXPECT_EQ(write(1, 257), ErrorKind::CellOutsideSheet);
    EXPECT_EQ(write(0, 1), ErrorKind::CellOutsideSheet);
    EXPECT_EQ(
        KindOf([&] { sheet.SetCell(1, 1, CellValue(std::string(32768, 'x')), CellMember::Value); }),
        ErrorKind::TextTooLong);
}

TEST_F(XlsWorkbookTest, AnErrorNamesTheFile)
{
    const auto path = folder_ / "cut.xls";
    util::ReplaceFile(path, util::ReadFile(kEverything).value().substr(0, 3000));
    try {
        const Workbook workbook(path);
        ADD_FAILURE();
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
        EXPECT_EQ(error.Subject(), path.string());
        EXPECT_NE(error.Cause(), "");
    }
}

} // namespace
} // namespace orrery::xls
