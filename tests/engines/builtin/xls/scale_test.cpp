#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/sheet/sheet_tables.h"
#include "engines/builtin/xls/stale_sheets.h"
#include "engines/builtin/xls/workbook.h"
#include "xls/art_builder.h"
#include "xls/built_workbook.h"

#include <algorithm>
#include <gtest/gtest.h>

// These large inputs take a second. If time grew with the square of the count, they would take many
// minutes and exceed a test's time limit.
namespace orrery::xls {
namespace {

using namespace test;

TEST(XlsScaleTest, ManySheetsThatReadTheNext)
{
    constexpr std::uint16_t kCount = 8000;
    std::vector<BuiltSheet> sheets;
    std::vector<std::uint16_t> links;
    std::vector<SavedSheet> saved;
    for (std::uint16_t i = 0; i < kCount; ++i) {
        const auto next = static_cast<std::uint16_t>((i + 1) % kCount);
        sheets.push_back({"S" + std::to_string(i),
                          WorksheetOf(FormulaOf(0, 0, 15, ResultOf(0), 0, CellOn(next)))});
        links.insert(links.end(), {0, i, i});
        saved.push_back({sheets.back().name, i, false});
    }
    const auto count = static_cast<std::uint16_t>(links.size() / 3);
    std::string externSheet;
    AppendRecord(externSheet, RecordType::ExternSheet, Numbers({count}) + Numbers(links));
    const auto stream = WorkbookStream(sheets, OwnBookOf(kCount) + externSheet);
    const Globals globals(stream);
    std::vector<TemplateSheet> originals;
    for (std::size_t i = 0; i < sheets.size(); ++i)
        originals.emplace_back(stream, globals.Sheets()[i].Offset, stream.size(), true);
    std::vector<bool> written(kCount);
    written[0] = true;
    const auto stale = FindStaleSheets(globals, originals, saved, written);
    EXPECT_EQ(std::count(stale.begin(), stale.end(), true), kCount) << "each through the others";
    EXPECT_EQ(FindStaleSheets(globals, originals, saved, std::vector<bool>(kCount)),
              std::vector<bool>(kCount));
}

TEST(XlsScaleTest, ManyNamesOfTheModel)
{
    constexpr std::size_t kNames = 60000;
    std::string names;
    for (std::size_t i = 0; i < kNames; ++i)
        names +=
            NameOf("N" + std::to_string(i % 300), static_cast<std::uint16_t>(i % 2), CellOn(0));
    const auto stream =
        WorkbookStream({{"A", WorksheetOf("")}}, OwnBookOf(1) + ExternSheetOf({0, 0, 0}) + names);
    const Globals globals(stream);
    std::vector<SavedSheet> sheets = {{"A", 0, false}};
    for (int i = 0; i < 11; ++i)
        sheets.push_back({"A" + std::to_string(i), 0, true});
    const References references(globals, sheets);
    std::size_t added = 0;
    const auto records = references.AddedNames();
    RecordReader reader(records);
    while (reader.Next())
        ++added;
    EXPECT_EQ(added, 11U * 300) << "equal names of a sheet have one twin";
}

TEST(XlsScaleTest, ManyTablesOfOneName)
{
    constexpr std::uint32_t kTables = 20000;
    TablePlaces places;
    for (std::uint32_t i = 1; i <= kTables; ++i)
        places.names.push_back({0, 0, 0, "Table", i, 255});
    TableIdentities identities({});
    identities.Reserve(places);
    for (std::uint32_t copy = 0; copy < 11; ++copy) {
        const auto fresh = identities.AddCopy(places);
        EXPECT_EQ(fresh.names.at(1), "Table_" + std::to_string(copy * kTables + 2));
        EXPECT_EQ(fresh.names.size(), kTables);
    }
}

TEST(XlsScaleTest, ManySelectionsOfManyShapes)
{
    constexpr std::uint32_t kShapes = 30000;
    std::string shapes;
    std::string selections;
    for (std::uint32_t i = 0; i < kShapes; ++i) {
        shapes += ShapeOf(1024 + i);
        selections +=
            RecordOf(RecordType::MsoDrawingSelection, ArtOf(0xF119, LongNumbers({1, 1, 1024 + i})));
    }
    std::string drawing;
    AppendRecord(drawing, RecordType::MsoDrawing,
                 DrawingOf(1, kShapes, 1024 + kShapes - 1, shapes));
    const auto places = FindDrawings(SheetOf(drawing + selections));
    ASSERT_EQ(places.drawings.size(), 1U);
    ASSERT_EQ(places.drawings[0].references.size(), kShapes);
    EXPECT_EQ(places.drawings[0].references.back().shape, kShapes - 1);
}

/// A link to a place on a sheet.
std::string LinkTo(const std::u16string& place)
{
    std::string data = Numbers({0, 0, 0, 0}) + std::string(16, '\0') + LongNumbers({2, 8});
    AppendU32(data, static_cast<std::uint32_t>(place.size() + 1));
    for (const char16_t unit : place)
        AppendU16(data, unit);
    return RecordOf(RecordType::Hyperlink, data + Numbers({0}));
}

TEST(XlsScaleTest, ManyLinksAndManySheets)
{
    std::string links;
    for (int i = 0; i < 40000; ++i)
        links += LinkTo(u"Last!A1");
    std::vector<BuiltSheet> sheets = {{"Model", WorksheetOf(links)}};
    for (int i = 0; i < 20000; ++i)
        sheets.push_back({"S" + std::to_string(i), WorksheetOf("")});
    sheets.push_back({"Last", WorksheetOf("")});
    const testing_support::ScratchFolder folder;
    Workbook book(WorkbookFile(folder / "source.xls", WorkbookStream(sheets)));
    book.FindWorksheet("Last")->SetName("End");
    book.SaveAs(folder / "target.xls", book::AccessMode::NoChange);
    const auto stream = SavedStream(folder / "target.xls");
    const Globals globals(stream);
    const auto begin = globals.Sheets()[0].Offset;
    const auto link = LinkTo(u"'End'!A1");
    EXPECT_EQ(stream.substr(begin + BofOf(0x10).size(), link.size()), link);
}

TEST(XlsScaleTest, ManyObjectsWithDataOfTheirOwn)
{
    constexpr std::uint32_t kObjects = 8000;
    std::string objects;
    std::vector<Node> storages;
    for (std::uint32_t i = 1; i <= kObjects; ++i) {
        objects +=
            RecordOf(RecordType::Obj,
                     Numbers({0x15, 0x12, 8, 1, 0, 0, 0, 0, 0, 0, 0}) +
                         Numbers({7, 2, 0xFFFF, 8, 2, 1}) + Numbers({9, 18, 12, 5, 0, 0}) +
                         std::string("\x02\0\0\0\0\0", 6) + LongNumbers({i}) + Numbers({0, 0}));
        const auto name = StorageName(i);
        storages.push_back(Storage({name.begin(), name.end()}, {Stream(u"in", "bytes")}));
    }
    const testing_support::ScratchFolder folder;
    Workbook book(WorkbookFile(folder / "source.xls",
                               WorkbookStream({{"Model", WorksheetOf(objects)}}),
                               std::move(storages)));
    auto* sheet = book.FindWorksheet("Model");
    for (int i = 0; i < 11; ++i) {
        sheet->CopyAfter(*sheet);
        sheet = sheet->Next();
    }
    book.SaveAs(folder / "target.xls", book::AccessMode::NoChange);
    const CompoundFile saved(util::ReadFile(folder / "target.xls").value());
    EXPECT_EQ(saved.MembersOf(kRootEntry).size(), 12U * kObjects + 1);
}

} // namespace
} // namespace orrery::xls
