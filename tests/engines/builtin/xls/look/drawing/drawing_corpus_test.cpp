#include "engines/builtin/xls/look/drawing/read_drawings.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/encryption.h"
#include "engines/builtin/xls/records/records.h"
#include "places/places.h"

#include "xls/corpus_streams.h"
#include "xls/look/test_styles.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <random>
#include <utility>

namespace orrery::xls {
namespace {

std::size_t CountOf(const std::vector<book::Drawing>& drawings)
{
    std::size_t count = drawings.size();
    for (const book::Drawing& drawing : drawings)
        count += CountOf(drawing.children);
    return count;
}

/// The objects of a worksheet that Excel draws: neither notes nor its own controls, nor those in
/// charts. `begin` is where its BOF record is.
std::size_t ShownObjects(std::string_view stream, std::size_t begin)
{
    constexpr std::uint16_t kChart = 0x20;
    constexpr std::uint16_t kNote = 0x19;
    constexpr std::uint16_t kCommonPart = 0x15;
    RecordReader reader(stream, begin);
    std::size_t depth = 0;
    std::size_t count = 0;
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::Bof && depth++ == 0 && ReadU16(record->data, 2) == kChart)
            return 0;
        if (record->type == RecordType::Eof && --depth == 0)
            break;
        if (record->type != RecordType::Obj || depth != 1 ||
            ReadU16(record->data, 0) != kCommonPart) // as in older versions, without office art
            continue;
        const bool isOwnControl = (ReadU16(record->data, 8) & 0x0100U) != 0;
        count += ReadU16(record->data, 4) == kNote || isOwnControl ? 0U : 1U;
    }
    return count;
}

class DrawingLooksCorpusTest : public testing::Test {
protected:
    void SetUp() override
    {
        streams_ = CorpusStreams();
        ASSERT_TRUE(!streams_.empty() || std::getenv("CI") == nullptr)
            << "no workbooks in " << places::CorpusFolder();
        if (streams_.empty())
            GTEST_SKIP() << "no workbooks in " << places::CorpusFolder();
        for (CorpusStream& stream : streams_) {
            auto decrypted = Decrypt(std::move(stream.bytes));
            ASSERT_TRUE(decrypted) << stream.name;
            stream.bytes = std::move(*decrypted);
        }
    }

    std::vector<CorpusStream> streams_;
};

TEST_F(DrawingLooksCorpusTest, ShowsEveryObject)
{
    std::size_t total = 0;
    for (const auto& stream : streams_) {
        const Globals globals(stream.bytes);
        const FormulaNames names(globals);
        DrawingReader reader(globals, names, test::StylesForTests());
        for (const SheetEntry& sheet : globals.Sheets()) {
            std::vector<book::LeftOut> leftOut;
            const std::size_t count = CountOf(reader.Read(sheet.Offset, leftOut));
            EXPECT_EQ(count, ShownObjects(stream.bytes, sheet.Offset))
                << stream.name << ": " << sheet.Name;
            EXPECT_TRUE(leftOut.empty()) << stream.name << ": " << leftOut[0].reason;
            total += count;
        }
    }
    EXPECT_GT(total, 100U);
}

TEST_F(DrawingLooksCorpusTest, SurvivesDamage)
{
    std::mt19937 random(5); // NOLINT: the same damage each time
    for (auto& stream : streams_) {
        const std::size_t end = Globals(stream.bytes).End();
        if (stream.bytes.size() > 200000 || end >= stream.bytes.size())
            continue;
        for (int i = 0; i < 300; ++i)
            stream.bytes[end + random() % (stream.bytes.size() - end)] =
                static_cast<char>(random());
        const Globals globals(stream.bytes);
        const FormulaNames names(globals);
        DrawingReader reader(globals, names, test::StylesForTests());
        for (const SheetEntry& sheet : globals.Sheets()) {
            std::vector<book::LeftOut> leftOut;
            EXPECT_LE(CountOf(reader.Read(sheet.Offset, leftOut)), 11000U);
        }
    }
}

} // namespace
} // namespace orrery::xls
