#include "engines/builtin/vba/dir_stream.h"

#include "book/error.h"
#include "util/error.h"
#include "vba/built_project.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orrery::vba {
namespace {

using namespace test;

const std::vector<BuiltModule> kModules = {
    {"ThisWorkbook"}, {"Sheet1"}, {"Module1", "Sub Run()\r\nEnd Sub\r\n", false}};

std::optional<std::string> CauseOf(const std::string& dir)
{
    try {
        const DirStream read(dir);
        return std::nullopt;
    }
    catch (const util::Error& error) {
        EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        return error.Cause();
    }
}

constexpr const char* kUnknown = "the list of modules has an unknown or misplaced entry";

/// The stream with the first occurrence of a record replaced.
std::string With(const std::string& record, const std::string& other)
{
    std::string dir = DirOf(kModules);
    const std::size_t at = dir.find(record);
    EXPECT_NE(at, dir.npos);
    return dir.replace(at, record.size(), other);
}

TEST(DirStreamTest, ListsModulesAndOtherNames)
{
    const DirStream dir(DirOf(kModules));
    ASSERT_EQ(dir.Modules().size(), 3U);
    const Module& sheet = dir.Modules()[1];
    EXPECT_EQ(sheet.name.text, "Sheet1");
    EXPECT_EQ(sheet.name.bytes, "Sheet1");
    EXPECT_EQ(sheet.stream, "Sheet1");
    EXPECT_EQ(sheet.offset, 50U);
    EXPECT_TRUE(sheet.isDocument);
    EXPECT_FALSE(dir.Modules()[2].isDocument);
    EXPECT_EQ(dir.OtherNames(), (std::vector<std::string>{"VBAProject", "Lib2"}));
}

TEST(DirStreamTest, NamesAreReadFromUnicode)
{
    // "Лист1" in the code page 1251
    const BuiltModule sheet{"\xD0\x9B\xD0\xB8\xD1\x81\xD1\x82"
                            "1",
                            "", true,
                            "\xCB\xE8\xF1\xF2"
                            "1"};
    const DirStream dir(DirOf({sheet}));
    EXPECT_EQ(dir.Modules().at(0).name.text, sheet.name);
    EXPECT_EQ(dir.Modules().at(0).name.bytes, sheet.bytes);
    EXPECT_EQ(dir.Modules().at(0).stream, sheet.name);
}

TEST(DirStreamTest, OldStreamsHaveNamesOfAsciiAlone)
{
    const auto dir = [](const std::string& name) {
        return ProjectRecords() + DirRecord(0x0F, U16(1)) + DirRecord(0x19, name) +
               DirRecord(0x1A, name) + DirRecord(0x31, U32(0)) + DirRecord(0x22, "") +
               DirRecord(0x2B, "") + DirRecord(0x10, "");
    };
    EXPECT_EQ(DirStream(dir("Sheet1")).Modules().at(0).name.text, "Sheet1");
    EXPECT_EQ(CauseOf(dir("T\xFC")), "the name of a module is in an unknown code page");
}

TEST(DirStreamTest, ModulesBeginWithTheirSource)
{
    auto modules = kModules;
    for (auto& each : modules)
        each.cache = 0;
    EXPECT_EQ(DirStream(DirOf(kModules)).Bytes(), DirOf(modules));
}

TEST(DirStreamTest, CopiesAreBehindTheirModelAndLikeIt)
{
    DirStream dir(DirOf(kModules));
    dir.AddCopy(1, {"Sheet4", "Sheet4"});
    dir.AddCopy(1, {"Sheet12", "Sheet12"});
    auto modules = kModules;
    modules.insert(modules.begin() + 2, {{"Sheet4"}, {"Sheet12"}});
    for (auto& each : modules)
        each.cache = 0;
    EXPECT_EQ(dir.Bytes(), DirOf(modules));
    EXPECT_EQ(dir.Modules().size(), 3U) << "those that were read";
}

TEST(DirStreamTest, ACopyHasItsNameInBothEncodings)
{
    const BuiltModule model{"\xC3\x84"
                            "1",
                            "", true,
                            "\xC4"
                            "1"};
    DirStream dir(DirOf({model}));
    dir.AddCopy(0, {"\xC3\x84"
                    "2",
                    "\xC4"
                    "2"});
    BuiltModule copy = model;
    copy.name = "\xC3\x84"
                "2";
    copy.bytes = "\xC4"
                 "2";
    std::vector<BuiltModule> modules = {model, copy};
    modules[0].cache = modules[1].cache = 0;
    EXPECT_EQ(dir.Bytes(), DirOf(modules));
}

TEST(DirStreamTest, ModulesMayBeReadOnlyAndPrivate)
{
    const std::string end = DirRecord(0x2B, "");
    EXPECT_EQ(CauseOf(With(end, DirRecord(0x25, "") + DirRecord(0x28, "") + end)), std::nullopt);
}

TEST(DirStreamTest, RefusesWhatItDoesNotKnow)
{
    const std::string end = DirRecord(0x2B, "");
    const std::string offset = DirRecord(0x31, U32(50));
    const std::string cookie = DirRecord(0x13, U16(0x4321));
    EXPECT_EQ(CauseOf(With(end, DirRecord(0x77, "?") + end)), kUnknown) << "in a module";
    EXPECT_EQ(CauseOf(With(cookie, DirRecord(0x77, "?"))), kUnknown) << "before the modules";
    EXPECT_EQ(CauseOf(With(DirRecord(0x07, U32(0)), DirRecord(0x77, U32(0)))), kUnknown);
    EXPECT_EQ(CauseOf(With(offset, offset + offset)), kUnknown) << "twice";
    EXPECT_EQ(CauseOf(With(offset, "")), kUnknown) << "missing";
    EXPECT_EQ(CauseOf(With(DirRecord(0x1A, "Sheet1"), "")), kUnknown) << "missing";
    EXPECT_EQ(CauseOf(With(end, DirRecord(0x19, "Sheet9") + end)), kUnknown) << "another name";
    EXPECT_EQ(CauseOf(With(DirRecord(0x47, Unicode("Sheet1")), DirRecord(0x47, "odd"))), kUnknown);
    EXPECT_EQ(CauseOf(DirOf(kModules) + '\0'), kUnknown) << "behind its end";
}

TEST(DirStreamTest, RefusesEndlessNames)
{
    EXPECT_EQ(CauseOf(DirOf(std::vector<BuiltModule>{{std::string(256, 'n')}})), std::nullopt);
    EXPECT_EQ(CauseOf(DirOf(std::vector<BuiltModule>{{std::string(257, 'n')}})),
              "the name of a module is too long");
}

TEST(DirStreamTest, RefusesAnotherNumberOfModules)
{
    const std::string count = DirRecord(0x0F, U16(3));
    for (const std::uint16_t wrong :
         {std::uint16_t{0}, std::uint16_t{2}, std::uint16_t{4}, std::uint16_t{0xFFFF}})
        EXPECT_NE(CauseOf(With(count, DirRecord(0x0F, U16(wrong)))), std::nullopt) << wrong;
}

TEST(DirStreamTest, RefusesWhatIsCutOff)
{
    const std::string dir = DirOf(kModules);
    for (std::size_t size = 0; size < dir.size(); ++size)
        EXPECT_NE(CauseOf(dir.substr(0, size)), std::nullopt) << size;
    EXPECT_EQ(CauseOf(dir), std::nullopt);
}

TEST(DirStreamTest, StandsAnyBytes)
{
    const std::string dir = DirOf(kModules);
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        const std::string where = xls::test::Noise(8, seed);
        std::string damaged = dir;
        damaged[xls::ReadU32(where, 0) % dir.size()] = where[4];
        damaged[xls::ReadU32(where, 1) % dir.size()] = where[5];
        try {
            DirStream read(damaged);
            for (std::size_t i = 0; i < read.Modules().size(); ++i)
                read.AddCopy(i, {"Copy", "Copy"});
            EXPECT_GT(read.Bytes().size(), damaged.size() / 2);
        }
        catch (const util::Error& error) {
            EXPECT_EQ(error.Kind(), book::ErrorKind::DamagedWorkbook);
        }
    }
}

} // namespace
} // namespace orrery::vba
