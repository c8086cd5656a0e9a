#include "engines/builtin/xls/compound/bytes.h"

#include "book/error.h"
#include "engines/builtin/xls/drawing/art_stream.h"
#include "engines/builtin/xls/drawing/drawing_places.h"
#include "engines/builtin/xls/drawing/group_records.h"
#include "util/error.h"
#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace orrery::xls {
namespace {

bool IsDamage(const std::function<void()>& call)
{
    try {
        call();
    }
    catch (const util::Error& error) {
        return error.Kind() == book::ErrorKind::DamagedWorkbook;
    }
    return false;
}

TEST(XlsBytesTest, NothingIsWrittenPastTheEnd)
{
    std::string bytes = "abcd";
    EXPECT_TRUE(IsDamage([&] { PutU8(bytes, 4, 1); }));
    EXPECT_TRUE(IsDamage([&] { PutU16(bytes, 3, 1); }));
    EXPECT_TRUE(IsDamage([&] { PutU32(bytes, 1, 1); }));
    EXPECT_TRUE(IsDamage([&] { PutU32(bytes, static_cast<std::size_t>(-2), 1); }));
    EXPECT_EQ(bytes, "abcd");
    PutU16(bytes, 2, 0x4142);
    EXPECT_EQ(bytes, "abBA");
}

TEST(XlsBytesTest, ANumberOfADrawingStaysInTheSheet)
{
    std::string sheet = "abcd";
    const ArtNumber number{{0, 1, 2, 9}, 0};
    EXPECT_TRUE(IsDamage([&] { number.Put(sheet, 0x41414141); }));
}

TEST(XlsBytesTest, ArtIsNotReadPastItsEnd)
{
    ArtStream art;
    EXPECT_TRUE(IsDamage([&] { art.U16(0); }));
    art.Append("abc", 0);
    EXPECT_TRUE(IsDamage([&] { art.U32(0); }));
    EXPECT_TRUE(IsDamage([&] { art.Place(3); }));
}

TEST(XlsBytesTest, AHeaderPictureWithoutFlagsCannotBeContinued)
{
    const auto model = test::RecordOf(RecordType::HeaderFooterPicture, "short");
    std::string records;
    GroupWriter writer(DrawingKind::HeaderFooter, model, records);
    EXPECT_TRUE(IsDamage([&] { writer.Append(std::string(3 * kMaxRecordSize, 'a')); }));
}

} // namespace
} // namespace orrery::xls
