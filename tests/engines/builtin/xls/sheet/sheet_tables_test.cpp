#include "engines/builtin/xls/sheet/sheet_tables.h"
#include "xls/table_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

/// FEATURE11 of a table with one range; `more` bytes follow its name.
std::string ListTableOf(std::uint32_t id, std::string_view name, std::size_t more = 20,
                        RecordType type = RecordType::Feature11)
{
    std::string data = FutureHeader(type) + Numbers({5});
    AppendU8(data, 0);
    data +=
        LongNumbers({0}) + Numbers({1}) + LongNumbers({0}) + Numbers({0}) + Numbers({2, 9, 1, 3});
    data += LongNumbers({0, id, 1, 0, 4, 64}) + std::string(40, '\x22');
    AppendUnicodeString(data, name);
    return RecordOf(type, data + std::string(more, '\x33'));
}

std::string FieldOf(std::string_view numbers, std::string_view title)
{
    std::string data = Numbers({0x0807, 0}) + std::string(numbers);
    AppendUnicodeString(data, title);
    return RecordOf(RecordType::QueryField, data);
}

std::string Copied(TableIdentities& identities, const std::string& sheet)
{
    const auto places = FindTables(sheet);
    auto copy = sheet;
    TextPatch patch;
    PutTables(copy, patch, places, identities.AddCopy(places));
    return patch.Apply(copy);
}

TEST(SheetTablesTest, ASheetWithoutTablesHasNone)
{
    EXPECT_TRUE(FindTables(SheetOf(SortOf(0, 7) + FilterOf(0))).Empty());
}

TEST(SheetTablesTest, CopiedTablesGetNewIdsAndNamesEverywhere)
{
    const auto sheet = [](std::uint32_t id, std::uint32_t filtered, std::uint32_t next,
                          std::string_view name, std::string_view second) {
        return SheetOf(TablesHeader(next) + ListTableOf(id, name) + ListOf(0, id) + ListOf(1, id) +
                       ListOf(2, id, name) + FilterOf(id) + FilterOf(0) + SortOf(1 << 3, id) +
                       SortOf(2 << 3, 3) + // of a filter: not an id
                       FieldOf(LongNumbers({0, 1, id}), "Title") +
                       FieldOf(LongNumbers({0, 1}), "No table") +
                       ListTableOf(filtered, second, 5, RecordType::Feature12));
    };
    const auto model = sheet(3, 7, 8, "Table1",
                             "B\xC3\xBC"
                             "cher \xCE\xA9");
    TableIdentities identities({"table1_2"});
    identities.Reserve(FindTables(model));
    EXPECT_EQ(Copied(identities, model), sheet(8, 9, 10, "Table1_3",
                                               "B\xC3\xBC"
                                               "cher \xCE\xA9_2"));
    EXPECT_EQ(Copied(identities, model), sheet(10, 11, 12, "Table1_4",
                                               "B\xC3\xBC"
                                               "cher \xCE\xA9_3"));
}

TEST(SheetTablesTest, ANameFitsIntoAFullRecord)
{
    const std::size_t head = 99 + 3;
    const auto model = SheetOf(ListTableOf(1, "Holidays", kMaxRecordSize - head - 8 - 1));
    TableIdentities identities({});
    identities.Reserve(FindTables(model));
    EXPECT_EQ(FindTables(Copied(identities, model)).names.at(0).name, "Holiday_2");
}

TEST(SheetTablesTest, DamagedTablesAreLeftAlone)
{
    const auto whole = ListTableOf(1, "Table1", 0);
    for (std::size_t size = 0; size + kRecordHeader < whole.size(); ++size) {
        const auto cut = RecordOf(RecordType::Feature11, whole.substr(kRecordHeader, size));
        const auto sheet = SheetOf(cut);
        EXPECT_TRUE(FindTables(sheet).Empty()) << size;
        TableIdentities identities({});
        EXPECT_EQ(Copied(identities, sheet), sheet) << size;
    }
}

} // namespace
} // namespace orrery::xls
