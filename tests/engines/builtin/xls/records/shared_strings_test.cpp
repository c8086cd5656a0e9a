#include "engines/builtin/xls/records/shared_strings.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"
#include "util/unicode.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace orrery::xls {
namespace {

using namespace std::string_literals;

constexpr std::size_t kOffset = 70000; // of the table in the stream

std::string Counts(std::uint32_t references, std::uint32_t texts)
{
    std::string bytes;
    AppendU32(bytes, references);
    AppendU32(bytes, texts);
    return bytes;
}

std::string Plain(std::string_view text)
{
    std::string bytes;
    AppendUnicodeString(bytes, text);
    return bytes;
}

/// The records of a table whose data is split at the ends of the pieces.
std::string Records(const std::vector<std::string>& pieces)
{
    std::string records;
    for (const auto& piece : pieces)
        AppendRecord(records, records.empty() ? RecordType::Sst : RecordType::Continue, piece);
    return records;
}

/// The plain strings of a table, read by the letter of the format and without checks, as any reader
/// reads them.
std::vector<std::u16string> PlainReading(std::string_view records)
{
    RecordReader reader(records);
    std::string_view data = reader.Next()->data;
    std::size_t left = ReadU32(data, 4);
    data.remove_prefix(8);
    std::vector<std::u16string> texts;
    for (; left > 0; --left) {
        if (data.empty())
            data = reader.Next()->data;
        std::size_t count = ReadU16(data, 0); // the header is never split
        bool wide = ReadU8(data, 2) == 1;
        EXPECT_LE(ReadU8(data, 2), 1);
        data.remove_prefix(3);
        texts.emplace_back();
        for (; count > 0; --count) {
            if (data.empty()) {
                EXPECT_FALSE(texts.back().empty()) << "a header without its first character";
                data = reader.Next()->data;
                wide = ReadU8(data, 0) == 1;
                data.remove_prefix(1);
            }
            texts.back() += wide ? static_cast<char16_t>(ReadU16(data, 0))
                                 : static_cast<char16_t>(ReadU8(data, 0));
            data.remove_prefix(wide ? 2 : 1);
        }
    }
    EXPECT_TRUE(data.empty());
    EXPECT_FALSE(reader.Next());
    return texts;
}

/// Every entry must lead to the beginning of its string and to the header of the record that
/// contains it.
void CheckExtSst(const SharedStringRecords& records, std::size_t offset, std::size_t count)
{
    const std::string stream = std::string(offset, '.') + records.sst;
    RecordReader reader(records.extSst);
    const auto record = reader.Next();
    ASSERT_EQ(record->type, RecordType::ExtSst);
    EXPECT_FALSE(reader.Next());
    const std::size_t texts = std::max<std::size_t>(8, count / 128 + 1);
    EXPECT_EQ(ReadU16(record->data, 0), texts);
    ASSERT_EQ(record->data.size(), 2 + 8 * ((count + texts - 1) / texts));
    const auto expected = PlainReading(records.sst);
    for (std::size_t i = 0; i * texts < count; ++i) {
        const std::size_t place = ReadU32(record->data, 2 + 8 * i);
        const std::size_t inRecord = ReadU16(record->data, 6 + 8 * i);
        const std::size_t header = place - inRecord;
        const auto type = static_cast<RecordType>(ReadU16(stream, header));
        ASSERT_EQ(type, header == offset ? RecordType::Sst : RecordType::Continue);
        ASSERT_LT(place, header + kRecordHeader + ReadU16(stream, header + 2));
        const auto& text = expected[i * texts];
        ASSERT_EQ(ReadU16(stream, place), text.size());
        if (!text.empty()) {
            const bool wide = ReadU8(stream, place + 2) == 1;
            EXPECT_EQ(wide ? ReadU16(stream, place + 3) : ReadU8(stream, place + 3), text[0]);
        }
        EXPECT_EQ(ReadU16(record->data, 8 + 8 * i), 0);
    }
}

std::vector<std::u16string> AfterAdding(const std::string& records,
                                        const std::vector<std::string>& texts)
{
    SharedStrings strings(records);
    for (const auto& text : texts)
        strings.IndexOf(text);
    const auto result = strings.ToRecords(1, kOffset);
    const auto read = PlainReading(result.sst);
    CheckExtSst(result, kOffset, read.size());
    return read;
}

TEST(SharedStringsTest, ReusesAPlainString)
{
    const auto records = Records({Counts(3, 2) + Plain("Mon") + Plain("Tue")});
    SharedStrings strings(records);
    EXPECT_EQ(strings.References(), 3U);
    EXPECT_EQ(strings.IndexOf("Tue"), 1U);
    EXPECT_EQ(strings.IndexOf("Mon"), 0U);
    EXPECT_FALSE(strings.Changed());
    EXPECT_EQ(strings.IndexOf("mon"), 2U);
    EXPECT_EQ(strings.IndexOf("mon"), 2U);
    EXPECT_TRUE(strings.Changed());
}

TEST(SharedStringsTest, UsesTheFirstOfEqualStrings)
{
    const auto records = Records({Counts(3, 3) + Plain("a") + Plain("b") + Plain("b")});
    SharedStrings strings(records);
    EXPECT_EQ(strings.IndexOf("b"), 1U);
    EXPECT_EQ(strings.IndexOf("c"), 3U);
}

TEST(SharedStringsTest, LeavesFormattedStringsAlone)
{
    const auto runs = "\3\0\x08\1\0Mon...."s; // one formatting run
    const auto aids = "\3\0\x04\2\0\0\0Tue.."s;
    const auto both = "\1\0\x0D\1\0\1\0\0\0W\0....."s;
    const auto records = Records({Counts(3, 4) + runs + aids + both + Plain("Mon")});
    SharedStrings strings(records);
    EXPECT_EQ(strings.IndexOf("Mon"), 3U);
    EXPECT_EQ(strings.IndexOf("Tue"), 4U);
    EXPECT_EQ(strings.IndexOf("W"), 5U);
    const auto sst = strings.ToRecords(7, 0).sst;
    EXPECT_EQ(ReadU16(sst, 2), sst.size() - kRecordHeader);
    EXPECT_EQ(sst.substr(4), Counts(7, 6) + records.substr(12) + Plain("Tue") + Plain("W"));
}

TEST(SharedStringsTest, AWideStringEqualsTheSameInOneByte)
{
    const auto records = Records({Counts(1, 1) + "\3\0\1M\0o\0n\0"s});
    EXPECT_EQ(SharedStrings(records).IndexOf("Mon"), 0U);
}

TEST(SharedStringsTest, ALoneSurrogateIsNotAReplacementCharacter)
{
    const auto records = Records({Counts(1, 1) + "\1\0\1\0\xD8"s});
    EXPECT_EQ(SharedStrings(records).IndexOf("\uFFFD"), 1U);
}

TEST(SharedStringsTest, CreatesAMissingTable)
{
    SharedStrings strings({});
    EXPECT_EQ(strings.References(), 0U);
    EXPECT_EQ(strings.ToRecords(0, 0).sst, "");
    EXPECT_EQ(strings.ToRecords(0, 0).extSst, "");
    EXPECT_EQ(strings.IndexOf("Mon"), 0U);
    EXPECT_EQ(strings.IndexOf(""), 1U);
    const auto records = strings.ToRecords(5, kOffset);
    EXPECT_EQ(records.sst, Records({Counts(5, 2) + Plain("Mon") + Plain("")}));
    CheckExtSst(records, kOffset, 2);
}

TEST(SharedStringsTest, AnUnchangedTableKeepsItsBytesExceptTheCount)
{
    const auto records = Records({Counts(3, 2) + Plain("a"), Plain("b")});
    const SharedStrings strings(records);
    EXPECT_EQ(strings.ToRecords(3, 0).sst, records);
    EXPECT_EQ(strings.ToRecords(9, 0).sst, Records({Counts(9, 2) + Plain("a"), Plain("b")}));
}

TEST(SharedStringsTest, ReadsStringsThatContinueInTheNextRecord)
{
    const auto records = Records({Counts(4, 4) + "\5\0\0ab"s, "\1c\0d\0"s, "\0e\3\0\1x\0"s,
                                  "\0yz\1\0\x08\1\0q.."s, "..\1\0\x04\4\0\0\0r."s, "..", "."s});
    SharedStrings strings(records);
    EXPECT_EQ(strings.IndexOf("abcde"), 0U);
    EXPECT_EQ(strings.IndexOf("xyz"), 1U);
    EXPECT_EQ(strings.IndexOf("q"), 4U);
}

TEST(SharedStringsTest, AddsAfterTheLastRecord)
{
    const auto records = Records({Counts(2, 2) + Plain("a"), Plain("b")});
    SharedStrings strings(records);
    strings.IndexOf("c");
    EXPECT_EQ(strings.ToRecords(3, 0).sst,
              Records({Counts(3, 3) + Plain("a"), Plain("b") + Plain("c")}));
}

/// A table whose only record has room for that many more bytes.
std::string TableWithRoom(std::size_t room)
{
    const std::string first(kMaxRecordSize - 8 - 3 - room, 'x');
    return Records({Counts(1, 1) + Plain(first)});
}

TEST(SharedStringsTest, BeginsAStringWhereItsHeaderAndFirstCharacterFit)
{
    const auto sizeOfFirst = [](std::size_t room, const std::string& text) {
        const auto records = TableWithRoom(room);
        EXPECT_EQ(AfterAdding(records, {text}).back(), util::ToUtf16(text));
        SharedStrings strings(records);
        strings.IndexOf(text);
        return RecordReader(strings.ToRecords(1, 0).sst).Next()->data.size() + room -
               kMaxRecordSize; // bytes of the new string in the first record
    };
    for (std::size_t room = 0; room < 4; ++room)
        EXPECT_EQ(sizeOfFirst(room, "ab"), 0U) << room;
    EXPECT_EQ(sizeOfFirst(4, "ab"), 4U);
    EXPECT_EQ(sizeOfFirst(5, "ab"), 5U);
    EXPECT_EQ(sizeOfFirst(2, ""), 0U);
    EXPECT_EQ(sizeOfFirst(3, ""), 3U);
    EXPECT_EQ(sizeOfFirst(4, "\u0142a"), 0U);
    EXPECT_EQ(sizeOfFirst(5, "\u0142a"), 5U);
    EXPECT_EQ(sizeOfFirst(6, "\u0142a"), 5U); // half a character is not written
    EXPECT_EQ(sizeOfFirst(5, "\U0001F4C5"), 0U);
    EXPECT_EQ(sizeOfFirst(7, "\U0001F4C5"), 7U);
    EXPECT_EQ(sizeOfFirst(7, "a\U0001F4C5"), 5U);
    EXPECT_EQ(sizeOfFirst(9, "a\U0001F4C5"), 9U);
}

TEST(SharedStringsTest, SplitsALongStringAtTheLimitOfARecord)
{
    std::string text;
    for (int i = 0; i < 16383; ++i)
        text += "\U0001F4C5";
    SharedStrings strings({});
    strings.IndexOf("!" + text);
    const auto records = strings.ToRecords(1, kOffset);
    CheckExtSst(records, kOffset, 1);
    EXPECT_EQ(PlainReading(records.sst), std::vector{util::ToUtf16("!" + text)});
    RecordReader reader(records.sst);
    EXPECT_EQ(reader.Next()->data.size(), 8221U); // 8 + 3 + 4105 units: no half pair
    EXPECT_EQ(reader.Next()->data.size(), 8221U); // 1 + 2055 pairs
}

TEST(SharedStringsTest, RefusesATextThatIsTooLongForACell)
{
    SharedStrings strings({});
    EXPECT_EQ(strings.IndexOf(std::string(32767, 'a')), 0U);
    try {
        strings.IndexOf(std::string(32768, 'b'));
        FAIL();
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::TextTooLong);
        EXPECT_EQ(error.Subject(), std::string(30, 'b'));
    }
}

TEST(SharedStringsTest, PutsMoreStringsIntoAnEntryIfThereAreMany)
{
    std::vector<std::string> texts;
    for (int i = 0; i < 2000; ++i)
        texts.push_back("text " + std::to_string(i) +
                        std::string(static_cast<unsigned>(i) % 50, 'x'));
    EXPECT_EQ(AfterAdding({}, texts).size(), 2000U);
    for (const std::size_t count : {7U, 8U, 9U, 1023U, 1024U, 1025U, 1152U})
        AfterAdding({}, {texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(count)});
}

TEST(SharedStringsTest, AnyStringsRoundTrip)
{
    std::mt19937 random(4);
    const auto below = [&](std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    };
    for (int round = 0; round < 50; ++round) {
        std::vector<std::string> texts;
        std::vector<std::u16string> expected;
        for (std::size_t i = 0; i < 60; ++i) {
            std::string text = std::to_string(i) + ' ';
            const auto length = below(below(10) == 0 ? 16000 : 400);
            const bool mixed = below(3) == 0;
            for (std::size_t at = 0; at < length; ++at) {
                if (mixed)
                    util::AppendUtf8(text, static_cast<char32_t>(0x1F400 + below(90)));
                else
                    text += static_cast<char>('a' + below(26));
            }
            texts.push_back(std::move(text));
            expected.push_back(util::ToUtf16(texts.back()));
        }
        const auto half = texts.begin() + 30;
        SharedStrings first({});
        for (auto text = texts.begin(); text != half; ++text)
            first.IndexOf(*text);
        EXPECT_EQ(AfterAdding(first.ToRecords(0, 0).sst, {half, texts.end()}), expected);
    }
}

struct DamageCase {
    const char* name;
    std::vector<std::string> pieces;
};
class SharedStringsDamageTest : public testing::TestWithParam<DamageCase> {};
TEST_P(SharedStringsDamageTest, IsReportedWhenAStringIsNeeded)
{
    const auto records = Records(GetParam().pieces);
    SharedStrings strings(records);
    try {
        strings.IndexOf("a");
        FAIL();
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
    }
}
INSTANTIATE_TEST_SUITE_P(
    Tables, SharedStringsDamageTest,
    testing::Values(DamageCase{"NoCounts", {"\1\0\0\0\1\0\0"s}},
                    DamageCase{"HeaderCutOff", {Counts(1, 2) + Plain("b") + "\1\0"s}},
                    DamageCase{"CharactersCutOff", {Counts(1, 1) + "\xFF\xFF\0abc"s}},
                    DamageCase{"NoCharactersInTheNextRecord", {Counts(1, 1) + "\2\0\0a"s, "\0"s}},
                    DamageCase{"NoFlagsInTheNextRecord", {Counts(1, 1) + "\2\0\0a"s, ""}},
                    DamageCase{"RunsCutOff",
                               {Counts(1, 1) + "\1\0\x08\xFF\xFF"
                                               "a...."s}},
                    DamageCase{"PhoneticDataCutOff",
                               {Counts(1, 1) + "\1\0\x04\xFF\xFF\xFF\xFF"
                                               "a...."s}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(SharedStringsTest, AnotherRecordIsNotATable)
{
    std::string records;
    AppendRecord(records, RecordType::Continue, Counts(0, 0));
    EXPECT_THROW(SharedStrings(records).IndexOf("a"), util::Error);
}

TEST(SharedStringsTest, AcceptsFewerStringsThanDeclared)
{
    const auto records = Records({Counts(9, 0xFFFFFFFF) + Plain("a")});
    SharedStrings strings(records);
    EXPECT_EQ(strings.IndexOf("b"), 1U);
    EXPECT_EQ(strings.ToRecords(9, 0).sst, Records({Counts(9, 2) + Plain("a") + Plain("b")}));
}

struct UncountedCase {
    const char* name;
    std::uint32_t count;
    std::vector<std::string> pieces; ///< of the data after the counts
};
class UncountedStringsTest : public testing::TestWithParam<UncountedCase> {};
TEST_P(UncountedStringsTest, AreCounted)
{
    auto pieces = GetParam().pieces;
    pieces.front().insert(0, Counts(3, GetParam().count));
    const auto records = Records(pieces);
    SharedStrings strings(records, 3);
    EXPECT_EQ(strings.IndexOf("Tue"), 1U);
    EXPECT_EQ(strings.IndexOf("January"), 3U);
    const auto result = strings.ToRecords(4, kOffset);
    EXPECT_EQ(PlainReading(result.sst),
              (std::vector<std::u16string>{u"Mon", u"Tue", u"Wed", u"January"}));
    CheckExtSst(result, kOffset, 4);
}
INSTANTIATE_TEST_SUITE_P(
    Tables, UncountedStringsTest,
    testing::Values(
        UncountedCase{"All", 0, {Plain("Mon") + Plain("Tue") + Plain("Wed")}},
        UncountedCase{"Last", 2, {Plain("Mon") + Plain("Tue") + Plain("Wed")}},
        UncountedCase{"InTheNextRecord", 1, {Plain("Mon"), Plain("Tue") + Plain("Wed")}},
        UncountedCase{"SplitOverRecords", 0, {Plain("Mon") + Plain("Tue") + "\3\0\0W"s, "\0ed"s}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(SharedStringsTest, EntriesLeadOnlyToStringsThatAreCounted)
{
    std::string texts;
    for (int i = 0; i < 100; ++i)
        texts += Plain("Mon");
    const auto records = Records({Counts(3, 2) + texts});
    SharedStrings strings(records, 100);
    EXPECT_EQ(strings.IndexOf("Mon"), 0U);
    const auto result = strings.ToRecords(3, kOffset);
    EXPECT_EQ(result.sst, records);
    RecordReader reader(result.extSst);
    EXPECT_EQ(reader.Next()->data.size(), 2U + 8U) << "one entry for up to eight strings";
}

TEST(SharedStringsTest, AddsNothingToATableWithFewerStringsThanCellsUse)
{
    for (const auto& records :
         {Records({Counts(3, 3) + Plain("Mon") + Plain("Tue")}),
          Records({Counts(3, 0) + Plain("Mon") + Plain("Tue") + "rest"}), std::string()}) {
        SharedStrings strings(records, 3);
        for (int i = 0; i < 2; ++i) {
            try {
                strings.IndexOf("January");
                ADD_FAILURE();
            }
            catch (const util::Error& error) {
                EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
                EXPECT_NE(error.Cause().find("its cells use 3 shared texts"), std::string::npos);
            }
        }
        EXPECT_FALSE(strings.Changed());
    }
}

TEST(SharedStringsTest, DataAfterTheLastStringIsReplaced)
{
    const auto expected = Records({Counts(1, 2) + Plain("a") + Plain("b")});
    for (const auto& records : {Records({Counts(1, 1) + Plain("a") + "rest"}),
                                Records({Counts(1, 1) + Plain("a"), "rest", "rest"})}) {
        SharedStrings strings(records);
        EXPECT_EQ(strings.IndexOf("b"), 1U);
        EXPECT_EQ(strings.ToRecords(1, 0).sst, expected);
    }
}

} // namespace
} // namespace orrery::xls
