#include "engines/builtin/xls/sheet/table_fields.h"

#include "book/error.h"
#include "util/error.h"
#include "xls/corpus_streams.h"
#include "xls/table_builder.h"

#include <gtest/gtest.h>

namespace orrery::xls {
namespace {

using namespace test;

const std::string kTokens = "\x1E\x07" + std::string(1, '\0'); // the number 7

/// Two mapped columns with every part that a column can have.
BuiltTable FullTable()
{
    BuiltTable table{.type = RecordType::Feature12, .source = 2, .entryId = "1"};
    table.hasHeaderRow = false;
    table.columns = {{.id = 1,
                      .nameInSource = "day",
                      .title = "Tag",
                      .element = "/plan/entry/day",
                      .totalFormat = "bold",
                      .insertFormat = "italic",
                      .hasFilter = true,
                      .filter = "a filter",
                      .formula = kTokens + kTokens,
                      .total = kTokens,
                      .totalIsArray = true,
                      .headerStyle = "Heading 1"},
                     {.id = 12,
                      .nameInSource = "\xCE\xA9",
                      .title = "\xCE\xA9",
                      .element = "/plan/entry/\xCE\xA9",
                      .hasFilter = true,
                      .totalText = "Sum"}};
    return table;
}

std::string PlainRecord(const std::string& record)
{
    return RemoveXmlMapping(record).Apply(record);
}

bool IsRefused(const std::string& record)
{
    try {
        RemoveXmlMapping(record);
    }
    catch (const util::Error& error) {
        return error.Kind() == book::ErrorKind::DamagedWorkbook;
    }
    return false;
}

TEST(TableFieldsTest, ColumnsLoseTheirMappingAndNothingElse)
{
    const auto table = FullTable();
    EXPECT_EQ(PlainRecord(TableDataOf(table)), TableDataOf(Unmapped(table)));
}

TEST(TableFieldsTest, AColumnMayLackAMapping)
{
    auto table = FullTable();
    table.hasHeaderRow = true;
    table.columns[0].headerStyle.clear();
    table.columns[0].element.clear();
    table.columns[0].total.clear();
    table.columns[0].totalIsArray = false;
    EXPECT_EQ(PlainRecord(TableDataOf(table)), TableDataOf(Unmapped(table)));
}

TEST(TableFieldsTest, ARecordThatIsCutOrTooLongIsRefused)
{
    const auto record = TableDataOf(FullTable());
    for (std::size_t size = 0; size < record.size(); ++size)
        EXPECT_TRUE(IsRefused(record.substr(0, size))) << size;
    EXPECT_FALSE(IsRefused(record));
    EXPECT_TRUE(IsRefused(record + '\0'));
}

TEST(TableFieldsTest, SizesBeyondTheRecordAreRefused)
{
    const auto record = TableDataOf(FullTable());
    for (std::size_t at = 0; at + 4 <= record.size(); ++at) {
        auto damaged = record;
        PutU32(damaged, at, 0xFFFFFFFF);
        try {
            PlainRecord(damaged);
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook) << at;
        }
    }
}

TEST(TableFieldsTest, ConstantsBehindTheTokensOfATotalAreRefused)
{
    auto table = FullTable();
    table.columns[0].total = '\x60' + std::string(7, '\0'); // an array of constants
    EXPECT_TRUE(IsRefused(TableDataOf(table)));
    table.columns[0].total = '\x66' + std::string(6, '\0'); // an area in memory
    EXPECT_TRUE(IsRefused(TableDataOf(table)));
    table.columns[0].total = "\xFF"; // no token
    EXPECT_TRUE(IsRefused(TableDataOf(table)));
    table.columns[0].totalIsArray = false; // ends with its tokens, whatever they are
    EXPECT_FALSE(IsRefused(TableDataOf(table)));
}

TEST(TableFieldsTest, TellsMappedTablesFromOthers)
{
    EXPECT_EQ(XmlMappingOf(TableDataOf(FullTable())), XmlMapping::Columns);
    EXPECT_EQ(XmlMappingOf(TableDataOf(Unmapped(FullTable()))), XmlMapping::None);
    EXPECT_EQ(XmlMappingOf(TableDataOf(MappedCell(1, "Owner"))), XmlMapping::Cell);
    for (const std::uint32_t source : {1U, 3U})
        EXPECT_EQ(XmlMappingOf(TableDataOf({.source = source})), XmlMapping::None);
    const auto cell = TableDataOf(MappedCell(1, "Owner"));
    const std::size_t table = TablePlace(cell).value();
    for (std::size_t size = 0; size < cell.size(); ++size) {
        const auto expected = size < table + 4    ? XmlMapping::None
                              : size < table + 32 ? XmlMapping::Columns
                                                  : XmlMapping::Cell;
        EXPECT_EQ(XmlMappingOf(cell.substr(0, size)), expected) << size;
    }
}

TEST(TableFieldsTest, TheTablesOfTheCorpusAreReadToTheirEnd)
{
    const auto streams = CorpusStreams();
    if (streams.empty())
        GTEST_SKIP() << "no workbooks";
    std::size_t tables = 0;
    for (const auto& stream : streams) {
        RecordReader reader(stream.bytes);
        while (const auto record = reader.Next()) {
            if (record->type != RecordType::Feature11 && record->type != RecordType::Feature12)
                continue;
            ++tables;
            const std::string data(record->data);
            EXPECT_EQ(XmlMappingOf(data), XmlMapping::None) << stream.name;
            EXPECT_TRUE(PlainRecord(data) == data) << stream.name << ": it is plain already";
        }
    }
    EXPECT_GT(tables, 0U);
}

} // namespace
} // namespace orrery::xls
