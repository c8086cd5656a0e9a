#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "util/error.h"

#include <gtest/gtest.h>
#include <string>

namespace orrery::xls {
namespace {

std::string Bof()
{
    std::string stream;
    AppendRecord(stream, RecordType::Bof, std::string(16, '\0'));
    return stream;
}

std::string Eof()
{
    std::string stream;
    AppendRecord(stream, RecordType::Eof, {});
    return stream;
}

TEST(BytesTest, ReadsWhatWasAppendedLowestByteFirst)
{
    std::string bytes;
    AppendU8(bytes, 0xFE);
    AppendU16(bytes, 0xF123);
    AppendU32(bytes, 0x89ABCDEF);
    AppendU64(bytes, 0xFEDCBA9876543210);
    EXPECT_EQ(bytes.substr(0, 7), "\xFE\x23\xF1\xEF\xCD\xAB\x89");
    EXPECT_EQ(ReadU8(bytes, 0), 0xFE);
    EXPECT_EQ(ReadU16(bytes, 1), 0xF123);
    EXPECT_EQ(ReadU32(bytes, 3), 0x89ABCDEF);
    EXPECT_EQ(ReadU64(bytes, 7), 0xFEDCBA9876543210);
}

TEST(BytesTest, WritesOverWhatIsThere)
{
    std::string bytes(7, '\0');
    PutU8(bytes, 0, 1);
    PutU16(bytes, 1, 0x302);
    PutU32(bytes, 3, 0x7060504);
    EXPECT_EQ(bytes, "\x01\x02\x03\x04\x05\x06\x07");
}

TEST(BytesTest, ReadingBeyondTheEndIsDamage)
{
    EXPECT_THROW(ReadU16("a", 0), util::Error);
    EXPECT_THROW(ReadU32("abcd", 1), util::Error);
    EXPECT_THROW(ReadU8("abcd", static_cast<std::size_t>(-1)), util::Error);
    EXPECT_THROW(Slice("abcd", 2, static_cast<std::size_t>(-1)), util::Error);
}

TEST(RecordReaderTest, GoesFromRecordToRecord)
{
    std::string stream = "..";
    AppendRecord(stream, RecordType::Blank, "abcdef");
    AppendRecord(stream, RecordType::Eof, {});
    RecordReader reader(stream, 2);
    EXPECT_EQ(reader.Peek()->data, "abcdef");
    const auto blank = reader.Next();
    ASSERT_TRUE(blank);
    EXPECT_EQ(blank->type, RecordType::Blank);
    EXPECT_EQ(blank->begin, 2U);
    EXPECT_EQ(blank->data, "abcdef");
    EXPECT_EQ(blank->End(), 12U);
    EXPECT_EQ(reader.Next()->type, RecordType::Eof);
    EXPECT_FALSE(reader.Next());
}

TEST(RecordReaderTest, RefusesARecordThatRunsPastTheEnd)
{
    std::string stream;
    AppendRecord(stream, RecordType::Blank, "abcdef");
    for (std::size_t size = 1; size < stream.size(); ++size)
        EXPECT_THROW(RecordReader(std::string_view(stream).substr(0, size)).Next(), util::Error);
}

TEST(AppendRecordTest, ContinuesInContinueRecords)
{
    std::string stream;
    AppendRecord(stream, RecordType::Name, std::string(2 * kMaxRecordSize + 1, 'x'));
    RecordReader reader(stream);
    EXPECT_EQ(reader.Next()->data.size(), kMaxRecordSize);
    EXPECT_EQ(reader.Peek()->type, RecordType::Continue);
    EXPECT_EQ(reader.Next()->data.size(), kMaxRecordSize);
    EXPECT_EQ(reader.Next()->data, "x");
    EXPECT_FALSE(reader.Next());
}

TEST(SubstreamEndTest, IncludesTheChartsOfASheet)
{
    const auto sheet = Bof() + Bof() + Eof() + Eof();
    EXPECT_EQ(SubstreamEnd("." + sheet + Bof() + Eof(), 1), 1 + sheet.size());
}

TEST(SubstreamEndTest, RefusesASheetWithoutBeginningOrEnd)
{
    EXPECT_THROW(SubstreamEnd(Eof(), 0), util::Error);
    EXPECT_THROW(SubstreamEnd(Bof() + Bof() + Eof(), 0), util::Error);
    EXPECT_THROW(SubstreamEnd("", 0), util::Error);
    EXPECT_THROW(SubstreamEnd(Bof() + Eof(), 4000), util::Error);
}

} // namespace
} // namespace orrery::xls
