#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/formula_map.h"
#include "engines/builtin/xls/formula/formula_places.h"
#include "engines/builtin/xls/formula/formula_tokens.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/shared_strings.h"
#include "places/places.h"
#include "xls/corpus_streams.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

class FormulaCorpusTest : public testing::Test {
protected:
    void SetUp() override
    {
        streams_ = CorpusStreams();
        ASSERT_TRUE(!streams_.empty() || std::getenv("CI") == nullptr)
            << "no workbooks in " << places::CorpusFolder();
        if (streams_.empty())
            GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
    }

    std::vector<CorpusStream> streams_;
};

/// The number of sheets and names that formulas can refer to.
struct Limits {
    std::size_t sheets = 0;
    std::size_t names = 0;
};

Limits ReadLimits(std::string_view stream)
{
    Limits limits;
    RecordReader reader(stream);
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::ExternSheet)
            limits.sheets = ReadU16(record->data, 0);
        limits.names += record->type == RecordType::Name ? 1U : 0U;
    }
    return limits;
}

bool IsWithin(std::string_view rgce, const FormulaUse& use, const Limits& limits)
{
    if (use.kind == FormulaUse::Kind::Name) {
        const auto name = ReadU32(rgce, use.nameAt);
        return name > 0 && name <= limits.names;
    }
    return ReadU16(rgce, use.sheetAt) < limits.sheets;
}

TEST_F(FormulaCorpusTest, EveryFormulaIsReadToItsEndAndRefersToWhatExists)
{
    std::size_t formulas = 0;
    std::size_t uses = 0;
    for (const auto& [name, stream] : streams_) {
        const auto limits = ReadLimits(stream);
        const bool complete = ForEachFormula(stream, [&](const FormulaPlace& place) {
            const auto rgce = std::string_view(stream).substr(place.begin, place.size);
            FormulaTokenReader reader(rgce);
            while (const auto token = reader.Next()) {
                const auto use = UseOf(*token);
                uses += use ? 1U : 0U;
                EXPECT_TRUE(!use || IsWithin(rgce, *use, limits))
                    << name << ": " << static_cast<int>(place.record) << " at " << place.begin;
            }
            EXPECT_TRUE(reader.Complete())
                << name << ": " << static_cast<int>(place.record) << " at " << place.begin;
            ++formulas;
        });
        EXPECT_TRUE(complete) << name;
    }
    EXPECT_GT(formulas, 10000U);
    EXPECT_GT(uses, 1000U);
}

TEST_F(FormulaCorpusTest, NewNumbersAndTheOldOnesAgainGiveTheOldBytes)
{
    const auto mapBy = [](int step) {
        const auto add = [step](auto number) {
            return static_cast<decltype(number)>(static_cast<int>(number) + step);
        };
        return FormulaMap{add, add, [add](std::uint16_t, std::uint32_t name) { return add(name); }};
    };
    for (const auto& [name, stream] : streams_) {
        std::string moved = stream;
        RemapFormulas(moved, mapBy(1));
        RemapFormulas(moved, mapBy(-1));
        EXPECT_EQ(moved, stream) << name;
    }
}

TEST_F(FormulaCorpusTest, DamagedFormulasDoNoHarm)
{
    std::mt19937 random(8);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    std::size_t tokens = 0;
    for (const auto& [name, stream] : streams_) {
        ForEachFormula(stream, [&](const FormulaPlace& place) {
            std::string rgce = stream.substr(place.begin, place.size);
            for (std::size_t flips = 1 + below(3); flips > 0; --flips)
                PutU8(rgce, below(rgce.size()), static_cast<std::uint8_t>(below(256)));
            FormulaTokenReader reader(rgce);
            while (const auto token = reader.Next()) {
                ASSERT_LE(token->End(), rgce.size());
                UseOf(*token);
                IsVolatile(rgce, *token);
                ++tokens;
            }
        });
    }
    EXPECT_GT(tokens, 10000U);
}

TEST_F(FormulaCorpusTest, DamagedRecordsDoNoHarm)
{
    std::mt19937 random(15);
    const FormulaMap same{[](std::uint16_t sheet) { return sheet; },
                          [](std::uint32_t index) { return index; },
                          [](std::uint16_t, std::uint32_t index) { return index; }};
    for (const auto& [name, stream] : streams_) {
        std::string damaged = stream;
        RecordReader reader(stream);
        while (const auto record = reader.Next()) { // headers stay, data is changed
            for (std::size_t at = random() % 24; at < record->data.size(); at += 1 + random() % 48)
                damaged[record->DataBegin() + at] = static_cast<char>(random());
        }
        std::string mapped = damaged;
        RemapFormulas(mapped, same);
        EXPECT_EQ(mapped, damaged) << name;
        ReadFacts(damaged);
    }
}

/// The table with its CONTINUE records, and its offset.
struct Table {
    std::size_t begin = 0;
    std::string_view sst;
    std::string_view extSst; ///< empty if there is none
};
Table FindTable(std::string_view stream)
{
    Table table;
    RecordReader reader(stream);
    while (const auto record = reader.Next()) {
        const bool goesOn = !table.sst.empty() && record->type == RecordType::Continue &&
                            table.begin + table.sst.size() == record->begin;
        if (record->type == RecordType::Sst)
            table.begin = record->begin;
        if (record->type == RecordType::Sst || goesOn)
            table.sst = stream.substr(table.begin, record->End() - table.begin);
        if (record->type == RecordType::ExtSst)
            table.extSst = stream.substr(record->begin, record->End() - record->begin);
    }
    return table;
}

TEST_F(FormulaCorpusTest, ExtSstIsWrittenAsByExcel)
{
    const std::string stale = "edr-Test_git_issue_217.xls"; // has the offsets of an older stream
    std::size_t equal = 0;
    for (const auto& [name, stream] : streams_) {
        const auto table = FindTable(stream);
        if (table.sst.empty() || table.extSst.empty())
            continue;
        const auto made = ExtSstRecord(table.sst, table.begin);
        // Some programs write fewer entries for more strings, some leave garbage after the entries.
        const bool byTheRule = made.size() == table.extSst.size() &&
                               ReadU16(made, kRecordHeader) == ReadU16(table.extSst, kRecordHeader);
        EXPECT_EQ(made == table.extSst, byTheRule && name != stale) << name;
        equal += made == table.extSst ? 1U : 0U;
    }
    EXPECT_GT(equal, 90U);
}

TEST_F(FormulaCorpusTest, EveryTableTakesNewStrings)
{
    for (const auto& [name, stream] : streams_) {
        const auto table = FindTable(stream);
        SharedStrings strings(table.sst);
        const auto first = strings.IndexOf("Never in a table 1");
        EXPECT_EQ(strings.IndexOf("Never in a table 2"), first + 1) << name;
        const auto records = strings.ToRecords(1, table.begin);
        SharedStrings again(records.sst);
        EXPECT_EQ(again.IndexOf("Never in a table 2"), first + 1) << name;
        EXPECT_EQ(again.IndexOf("Never in a table 1"), first) << name;
        EXPECT_FALSE(again.Changed()) << name;
        EXPECT_EQ(first, table.sst.empty() ? 0 : ReadU32(table.sst, kRecordHeader + 4)) << name;
    }
}

} // namespace
} // namespace orrery::xls
