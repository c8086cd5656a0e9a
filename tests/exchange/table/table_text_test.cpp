#include "exchange/table/table_text.h"

#include "exchange/error.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/scratch_folder.h"

#include <gtest/gtest.h>

namespace orrery::exchange {
namespace {

using namespace std::string_literals;

std::string Decoded(std::string bytes)
{
    const TableText text(std::move(bytes), "a.csv");
    return text.Decode(text.Bytes());
}

TEST(TableText, KnowsItsEncoding)
{
    EXPECT_EQ(Decoded("Müller"), "Müller");
    EXPECT_EQ(Decoded("\xEF\xBB\xBFMüller"), "Müller");
    EXPECT_EQ(Decoded("M\xFCller"), "Müller"); // Windows-1252
    EXPECT_EQ(Decoded("\xFF\xFEM\0\xFC\0"s), "Mü");
    EXPECT_EQ(Decoded("\xFE\xFF\0M\0\xFC"s), "Mü");
    EXPECT_EQ(Decoded("\xFF\xFE\x3D\xD8\x00\xDE"s), "\xF0\x9F\x98\x80");
    EXPECT_EQ(Decoded("\xFF\xFEM\0x"s), "M");
    EXPECT_EQ(Decoded(""), "");
}

TEST(TableText, KeepsPairsTogetherInLongTexts)
{
    std::string bytes = "\xFF\xFEx\0"s;
    std::string expected = "x";
    for (int i = 0; i < 100'000; ++i) {
        bytes += "\x3D\xD8\x00\xDE"s;
        expected += "\xF0\x9F\x98\x80";
    }
    EXPECT_EQ(Decoded(bytes) == expected, true);
}

TEST(TableText, RefusesWhatIsNoText)
{
    const testing_support::ScratchFolder scratch;
    try {
        LoadTableText(scratch.Write("a.csv", "MZ\0\x01"s));
        FAIL();
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::NotAText);
        EXPECT_NE(util::ErrorText(error).find("a.csv\" is not a text."), std::string::npos);
    }
    EXPECT_THROW(LoadTableText(scratch / "missing.csv"), Error);
    EXPECT_THROW(LoadTableText(scratch.Path()), Error);
}

TEST(TableText, RefusesLargeFiles)
{
    const testing_support::ScratchFolder scratch;
    const auto path = scratch.Write("a.csv", "x");
    std::filesystem::resize_file(path, kMostTableSize + 1);
    try {
        LoadTableText(path);
        FAIL();
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::FileTooLarge);
    }
}

} // namespace
} // namespace orrery::exchange
