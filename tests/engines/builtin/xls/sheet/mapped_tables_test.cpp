#include "book/error.h"
#include "engines/builtin/xls/sheet/sheet_tables.h"
#include "util/error.h"
#include "xls/table_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

BuiltTable MappedColumns(std::uint32_t id, std::string name)
{
    BuiltTable table{.source = 2, .id = id, .name = std::move(name)};
    table.columns = {{.id = 1, .nameInSource = "day", .title = "Tag", .element = "/plan/day"},
                     {.id = 2, .nameInSource = "hours", .title = "Zeit", .element = "/plan/hours"}};
    return table;
}

BuiltTable Renamed(BuiltTable table, std::uint32_t id, std::string name)
{
    table.id = id;
    table.name = std::move(name);
    return table;
}

/// A filter of a table with a record that continues it.
std::string LongFilterOf(std::uint32_t id)
{
    return FilterOf(id) +
           RecordOf(RecordType::ContinueFrt12, FutureHeader(RecordType::ContinueFrt12) + "more");
}

constexpr std::uint16_t kSortsTable = 1 << 3;

std::string Copied(const std::string& sheet)
{
    const auto places = FindTables(sheet);
    TableIdentities identities({});
    identities.Reserve(places);
    auto copy = sheet;
    TextPatch patch;
    PutTables(copy, patch, places, identities.AddCopy(places));
    return patch.Apply(copy);
}

/// The cause of the refusal, if it is one.
std::string CauseOfRefusal(const std::string& sheet)
{
    try {
        Copied(sheet);
    }
    catch (const util::Error& error) {
        return error.Kind() == book::ErrorKind::SheetNotCopied ? error.Cause() : "another error";
    }
    return {};
}

const std::string kDamagedMapping = "the XML mapping of one of its tables is damaged";

TEST(MappedTablesTest, CopiesHavePlainTables)
{
    for (const auto type : {RecordType::Feature11, RecordType::Feature12}) {
        const auto sheet = [&](const BuiltTable& mapped, const BuiltTable& other,
                               std::uint32_t next) {
            return SheetOf(TablesHeader(next) + TableOf(mapped) +
                           ListOf(2, mapped.id, mapped.name) + LongFilterOf(mapped.id) +
                           TableOf(other) + ListOf(1, other.id, "Style"));
        };
        auto mapped = MappedColumns(3, "Entries");
        mapped.type = type;
        auto other = Unmapped(MappedColumns(4, "Others"));
        other.columns[0].nameInSource = "kept";
        EXPECT_EQ(Copied(sheet(mapped, other, 5)), sheet(Renamed(Unmapped(mapped), 5, "Entries_2"),
                                                         Renamed(other, 6, "Others_2"), 7));
    }
}

TEST(MappedTablesTest, ARecordThatSaysItsSizeSaysTheNewOne)
{
    auto mapped = MappedColumns(1, "Entries");
    mapped.saysSize = true;
    EXPECT_EQ(Copied(SheetOf(TableOf(mapped))),
              SheetOf(TableOf(Renamed(Unmapped(mapped), 2, "Entries_2"))));
}

/// A table with that many columns of about 300 bytes each, and 130 more for the mapping.
BuiltTable WideTable(std::uint32_t columns)
{
    BuiltTable table{.type = RecordType::Feature12, .source = 2, .name = "Wide"};
    for (std::uint32_t id = 1; id <= columns; ++id) {
        table.columns.push_back({.id = id,
                                 .nameInSource = "column" + std::to_string(id),
                                 .element = "/plan/a" + std::string(100, 'b'),
                                 .insertFormat = std::string(249, 'f')});
    }
    return table;
}

TEST(MappedTablesTest, ATableOfSeveralRecordsIsJoinedAndSplitAgain)
{
    const auto wide = WideTable(100);
    const auto plain = Renamed(Unmapped(wide), 2, "Wide_2");
    ASSERT_GT(TableDataOf(plain).size(), 2 * kMaxRecordSize);
    EXPECT_EQ(Copied(SheetOf(TableOf(wide) + TablesHeader(2))),
              SheetOf(TableOf(plain) + TablesHeader(3)));
    EXPECT_EQ(Copied(SheetOf(TableOf(wide, 500))), SheetOf(TableOf(plain)))
        << "wherever it was split";
}

TEST(MappedTablesTest, ATableMayNeedFewerRecords)
{
    const auto wide = WideTable(25);
    const auto plain = Renamed(Unmapped(wide), 2, "Wide_2");
    ASSERT_GT(TableDataOf(wide).size(), kMaxRecordSize);
    ASSERT_LT(TableDataOf(plain).size(), kMaxRecordSize);
    EXPECT_EQ(Copied(SheetOf(TableOf(wide))), SheetOf(TableOf(plain)));
}

TEST(MappedTablesTest, CopiesLackMappedCells)
{
    const auto cell = [](std::uint32_t id) {
        return TableOf(MappedCell(id, "Owner" + std::to_string(id)), 100) + ListOf(0, id, "Style") +
               ListOf(2, id, "Owner" + std::to_string(id)) + LongFilterOf(id) +
               SortOf(kSortsTable, id);
    };
    const auto other = Unmapped(MappedColumns(2, "Others"));
    const auto copiedOther = Renamed(other, 4, "Others_2");
    const auto model = SheetOf(TablesHeader(4) + cell(1) + TableOf(other) + cell(3) +
                               ListOf(2, 2, "Others") + FilterOf(0));
    EXPECT_EQ(Copied(model), SheetOf(TablesHeader(5) + TableOf(copiedOther) +
                                     ListOf(2, 4, "Others_2") + FilterOf(0)));
}

TEST(MappedTablesTest, WithoutTablesThereIsNoHeaderOfThem)
{
    const auto cell = TableOf(MappedCell(1, "Owner"));
    EXPECT_EQ(Copied(SheetOf(TablesHeader(2) + cell + FilterOf(0))), SheetOf(FilterOf(0)));
    EXPECT_FALSE(FindTables(SheetOf(TablesHeader(2) + cell)).Empty());
}

TEST(MappedTablesTest, NamesAndIdsOfMappedCellsStayTaken)
{
    const auto cells = FindTables(SheetOf(TableOf(MappedCell(8, "Others_2"))));
    const auto others = FindTables(SheetOf(TableOf(Unmapped(MappedColumns(2, "Others")))));
    TableIdentities identities({});
    identities.Reserve(cells);
    identities.Reserve(others);
    EXPECT_TRUE(identities.AddCopy(cells).ids.empty());
    const auto fresh = identities.AddCopy(others);
    EXPECT_EQ(fresh.ids.at(2), 9U);
    EXPECT_EQ(fresh.names.at(2), "Others_3");
}

TEST(MappedTablesTest, WhatIsCutIsRefusedIfItIsMapped)
{
    const auto data = TableDataOf(MappedColumns(1, "Entries"));
    const std::size_t source = 35; // where the table begins
    for (std::size_t size = 0; size < data.size(); ++size) {
        const auto sheet = SheetOf(RecordOf(RecordType::Feature11, data.substr(0, size)));
        if (size < source + 4)
            EXPECT_EQ(Copied(sheet), sheet) << size;
        else
            EXPECT_EQ(CauseOfRefusal(sheet), kDamagedMapping) << size;
    }
    EXPECT_EQ(CauseOfRefusal(SheetOf(RecordOf(RecordType::Feature11, data))), "");
}

TEST(MappedTablesTest, WhatIsCutIsLeftAloneIfItIsNotMapped)
{
    const auto plain = Unmapped(MappedColumns(1, "Entries"));
    const auto data = TableDataOf(plain);
    const auto copied = TableDataOf(Renamed(plain, 2, "Entries_2"));
    const std::size_t nameEnd = 35 + 64 + 3 + plain.name.size();
    for (std::size_t size = nameEnd; size < data.size(); ++size)
        EXPECT_EQ(Copied(SheetOf(RecordOf(RecordType::Feature11, data.substr(0, size)))),
                  SheetOf(RecordOf(RecordType::Feature11, copied.substr(0, size + 2))));
}

TEST(MappedTablesTest, AMappedCellIsDroppedHoweverItEnds)
{
    const auto data = TableDataOf(MappedCell(1, "Owner"));
    for (std::size_t size = 35 + 32; size <= data.size(); ++size) {
        const auto cell = RecordOf(RecordType::Feature11, data.substr(0, size));
        EXPECT_EQ(Copied(SheetOf(TablesHeader(2) + cell + SortOf(kSortsTable, 1))), SheetOf(""))
            << size;
    }
}

TEST(MappedTablesTest, AMappedCellThatSharesItsIdIsRefused)
{
    const auto cell = TableOf(MappedCell(1, "Owner"));
    EXPECT_EQ(CauseOfRefusal(SheetOf(cell)), "");
    EXPECT_EQ(CauseOfRefusal(SheetOf(cell + TableOf(MappedColumns(1, "Entries")))),
              kDamagedMapping);
    EXPECT_EQ(CauseOfRefusal(SheetOf(cell + TableOf(Unmapped(MappedColumns(1, "Entries"))))),
              kDamagedMapping);
    EXPECT_EQ(CauseOfRefusal(SheetOf(TableOf(MappedCell(0, "Owner")))), kDamagedMapping)
        << "the id of the sheet's own filter";
}

} // namespace
} // namespace orrery::xls
