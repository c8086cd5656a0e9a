// Files in the users' code page and in UTF-8, read and written back.

#include "app/settings.h"
#include "generate/run_support.h"
#include "holidays/files/holiday_readers.h"
#include "model/parameter_file.h"
#include "ui/tip_form.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/profile.h"
#include "util/scratch_folder.h"
#include "util/text.h"

#include <array>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <windows.h>

namespace orrery {
namespace {

using testing::ElementsAre;
using testing_support::BytesOf;
using testing_support::ScratchFolder;

/// A text in a code page, and the same in UTF-8.
struct CodePageText {
    unsigned codePage;
    const char* bytes;
    const char* utf8;
    const char* foreign; ///< UTF-8 of a text that the code page cannot encode
};
const std::array<CodePageText, 2> kTexts = {
    {{1252, "Fr\xFChling \x80 \x96 \xC5ngstr\xF6m",
      "Fr\xC3\xBChling \xE2\x82\xAC \xE2\x80\x93 \xC3\x85ngstr\xC3\xB6m",
      "\xE5\x85\x83\xE6\x97\xA5"},
     // New Year's Day; words whose second characters end in the byte of a backslash; a word of
     // one-byte characters.
     {932, "\x8C\xB3\x93\xFA \x83\x5C\x95\x5C\x8E\xA6 \xB6\xDE\xDD",
      "\xE5\x85\x83\xE6\x97\xA5 \xE3\x82\xBD\xE8\xA1\xA8\xE7\xA4\xBA "
      "\xEF\xBD\xB6\xEF\xBE\x9E\xEF\xBE\x9D",
      "Fr\xC3\xBChling \xE2\x82\xAC"}}};

class TextFilesTest : public testing::Test {
protected:
    /// The test is started for one code page, which must be the system's.
    void SetUp() override
    {
        const char* const wanted = std::getenv("ORRERY_CODE_PAGE");
        if (wanted != nullptr) {
            ASSERT_EQ(std::to_string(GetACP()), wanted);
        }
        for (const CodePageText& text : kTexts) {
            if (text.codePage == GetACP())
                text_ = &text;
        }
        if (text_ == nullptr)
            GTEST_SKIP() << "nothing is known of code page " << GetACP();
    }

    std::string Ansi() const { return text_->bytes; }
    std::string Utf8() const { return text_->utf8; }
    std::string Foreign() const { return text_->foreign; }

    const CodePageText* text_ = nullptr;
    ScratchFolder scratch_;
};

TEST_F(TextFilesTest, HolidayFiles)
{
    holidays::HolidayList list;
    holidays::ReadHolidayFile(scratch_.Write("a.txt", "0101, DAY," + Ansi() + "\r\n"), list);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list[0].Name, Utf8());
    for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
        const std::string text = mark + "0101, DAY," + Utf8() + "\r\n0102, DAY," + Foreign();
        holidays::ReadHolidayFile(scratch_.Write("u.txt", text), list);
        ASSERT_EQ(list.Count(), 2);
        EXPECT_EQ(list[0].Name, Utf8());
        EXPECT_EQ(list[1].Name, Foreign());
    }
}

/// The names of the monthly calendar's holidays in a written parameter file.
class ParameterFilesTest : public TextFilesTest {
protected:
    void WriteHolidays(const std::vector<std::string>& names)
    {
        model::ParameterSets sets;
        for (const std::string& name : names)
            sets.Monthly.Holidays.Append({101, 1, name});
        sets.Monthly.SheetName = names.front();
        model::WriteParameterFile(file_, tables_, sets);
    }

    model::ParameterSets ReadBack()
    {
        model::ParameterSets sets;
        model::ReadParameterFile(file_, tables_, sets);
        return sets;
    }

    std::filesystem::path file_ = scratch_ / "Desk.ini";
    model::NameTables tables_ = fake::TestNames();
};

TEST_F(ParameterFilesTest, AreWrittenInTheCodePage)
{
    WriteHolidays({Utf8()});
    const std::string bytes = BytesOf(file_);
    EXPECT_THAT(bytes, testing::HasSubstr("SheetName=" + Ansi() + "\r\n"));
    EXPECT_THAT(bytes, testing::Not(testing::HasSubstr(Utf8())));
    const model::ParameterSets sets = ReadBack();
    EXPECT_EQ(sets.Monthly.SheetName, Utf8());
    ASSERT_EQ(sets.Monthly.Holidays.Count(), 1);
    EXPECT_EQ(sets.Monthly.Holidays[0].Name, Utf8());
}

TEST_F(ParameterFilesTest, AreWrittenInUtf8IfTheCodePageLacksACharacter)
{
    WriteHolidays({Utf8(), Foreign()});
    EXPECT_TRUE(util::IsValidUtf8(BytesOf(file_)));
    const model::ParameterSets sets = ReadBack();
    EXPECT_EQ(sets.Monthly.SheetName, Utf8());
    ASSERT_EQ(sets.Monthly.Holidays.Count(), 2);
    EXPECT_EQ(sets.Monthly.Holidays[1].Name, Foreign());
}

TEST_F(TextFilesTest, SettingsOfTheCodePageStayInIt)
{
    const auto file = scratch_.Write(
        "orrery.ini", "; " + Ansi() + "\r\n[MonthName]\r\n1Name=" + Ansi() + "\r\nCount=1\r\n");
    EXPECT_EQ(util::Profile(file).Read("MonthName", "1Name", "x"), Utf8());
    EXPECT_TRUE(util::Profile(file).Write("MonthName", "Count", Utf8()));
    EXPECT_EQ(BytesOf(file), "; " + Ansi() + "\r\n[MonthName]\r\n1Name=" + Ansi() +
                                 "\r\nCount=" + Ansi() + "\r\n");
    EXPECT_EQ(util::Profile(file).Read("MonthName", "Count", "x"), Utf8());
}

TEST_F(TextFilesTest, SettingsOfTheCodePageBecomeUtf8ForACharacterThatItLacks)
{
    const auto file = scratch_.Write("orrery.ini", "[A]\r\nx=" + Ansi() + "\r\ny=1\r\n");
    EXPECT_TRUE(util::Profile(file).Write("A", "y", Foreign()));
    EXPECT_EQ(util::Profile(file).Read("A", "x", ""), Utf8());
    EXPECT_EQ(util::Profile(file).Read("A", "y", ""), Foreign());
    EXPECT_EQ(BytesOf(file), "[A]\r\nx=" + Utf8() + "\r\ny=" + Foreign() + "\r\n");
}

TEST_F(TextFilesTest, SettingsOfUtf8StayUtf8)
{
    for (const std::string mark : {"", "\xEF\xBB\xBF"}) {
        const std::string head = mark + "[A]\r\nx=" + Utf8() + Foreign() + "\r\ny=";
        const auto file = scratch_.Write("orrery.ini", head + "1\r\n");
        EXPECT_EQ(util::Profile(file).Read("A", "x", ""), Utf8() + Foreign());
        EXPECT_TRUE(util::Profile(file).Write("A", "y", Utf8()));
        EXPECT_EQ(BytesOf(file), head + Utf8() + "\r\n");
        EXPECT_EQ(util::Profile(file).Read("A", "y", ""), Utf8());
    }
}

TEST_F(TextFilesTest, SettingsAreReadAlikeByTheSystemsOwnFunction)
{
    const auto file = scratch_.Write("orrery.ini", "[A]\r\nx=" + Ansi() + "\r\n");
    EXPECT_TRUE(util::Profile(file).Write("A", "y", Utf8()));
    std::array<char, 200> value = {};
    for (const char* const key : {"x", "y"}) {
        GetPrivateProfileStringA("A", key, "", value.data(), static_cast<DWORD>(value.size()),
                                 file.string().c_str());
        EXPECT_EQ(std::string(value.data()), Ansi()) << key;
    }
}

TEST_F(TextFilesTest, SettingsInAFolderThatTheCodePageLacks)
{
    std::filesystem::create_directory(scratch_ / Foreign());
    const auto file = scratch_.Write(Foreign() + "/orrery.ini", "[A]\r\nx=" + Ansi() + "\r\n");
    EXPECT_EQ(util::Profile(file).Read("A", "x", ""), Utf8());
    EXPECT_TRUE(util::Profile(file).Write("A", "y", Utf8()));
    EXPECT_EQ(BytesOf(file), "[A]\r\nx=" + Ansi() + "\r\ny=" + Ansi() + "\r\n");
}

TEST_F(TextFilesTest, Tips)
{
    const std::string settings = util::FromPath(scratch_ / "orrery.ini");
    const auto ansi = scratch_.Write("tips.txt", Ansi() + "\r\n" + Ansi() + "\r\n");
    EXPECT_THAT(ui::TipForm(settings, util::FromPath(ansi)).tipList, ElementsAre(Utf8(), Utf8()));
    const auto utf8 = scratch_.Write("more.txt", Foreign() + "\r\n" + Utf8());
    EXPECT_THAT(ui::TipForm(settings, util::FromPath(utf8)).tipList,
                ElementsAre(Foreign(), Utf8()));
}

} // namespace
} // namespace orrery
