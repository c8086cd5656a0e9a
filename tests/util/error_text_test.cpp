#include "util/error.h"
#include "util/error_report.h"
#include "util/error_text.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <new>
#include <set>
#include <stdexcept>

namespace orrery::util {
namespace {

constexpr int kKinds = static_cast<int>(ErrorKind::WrongUsage) + 1;

TEST(ErrorText, HasItsOwnSentenceForEveryKind)
{
    std::set<std::string> texts;
    for (int i = 0; i < kKinds; ++i) {
        const auto kind = static_cast<ErrorKind>(i);
        // The two kinds that pass a text on give it unchanged, so it differs here.
        const std::string text =
            ErrorText(Error(kind, "Desk.xlsx", "cause " + std::to_string(i) + '.'));
        EXPECT_GT(text.size(), 7U) << i;
        EXPECT_TRUE(text.ends_with('.')) << text;
        EXPECT_EQ(text.find(".."), std::string::npos) << text;
        EXPECT_TRUE(texts.insert(text).second) << "twice: " << text;
    }
}

TEST(ErrorText, StaysASentenceWithoutACause)
{
    for (int i = 0; i < kKinds; ++i) {
        const auto kind = static_cast<ErrorKind>(i);
        if (kind == ErrorKind::ApplicationFailure || kind == ErrorKind::ShellFailure)
            continue; // nothing but the cause
        const std::string text = ErrorText(Error(kind, "Desk.xlsx"));
        EXPECT_TRUE(text.ends_with('.')) << text;
        EXPECT_EQ(text.find(": ."), std::string::npos) << text;
    }
}

TEST(ErrorText, NamesTheSubject)
{
    for (int i = static_cast<int>(ErrorKind::NotNumeric);
         i <= static_cast<int>(ErrorKind::EngineMissing); ++i) {
        const std::string text = ErrorText(Error(static_cast<ErrorKind>(i), "Desk.xlsx"));
        EXPECT_NE(text.find("\"Desk.xlsx\""), std::string::npos) << text;
    }
}

TEST(ErrorText, ShowsNoEmptyNameOfAFile)
{
    for (int i = static_cast<int>(ErrorKind::FileNotFound);
         i <= static_cast<int>(ErrorKind::TooDeeplyNested); ++i) {
        const auto kind = static_cast<ErrorKind>(i);
        const std::string text = ErrorText(Error(kind, "", "cause"));
        if (kind != ErrorKind::FolderNotCreated) { // whoever makes a folder knows its name
            EXPECT_EQ(text.find("\"\""), std::string::npos) << text;
        }
    }
    EXPECT_EQ(ErrorText(Error(ErrorKind::DamagedWorkbook, "", "no parts")),
              "The workbook is damaged: no parts. Repair it in the spreadsheet program or use "
              "another copy.");
}

TEST(ErrorText, ShowsControlCharactersOfNamesAsOneSign)
{
    EXPECT_EQ(Printable("a\tb\n\x7F\xC2\x9B c\xC3\xA4"), "a\xEF\xBF\xBD"
                                                         "b\xEF\xBF\xBD\xEF\xBF\xBD"
                                                         "\xEF\xBF\xBD c\xC3\xA4");
    const Error error(ErrorKind::NotAWorksheet, "a\x1B[31m", "b\x07");
    const std::string text = ErrorText(error);
    EXPECT_TRUE(text.starts_with("\"a\xEF\xBF\xBD[31m\" is not a worksheet: b\xEF\xBF\xBD."))
        << text;
}

TEST(ErrorText, TellsAboutThePassword)
{
    EXPECT_EQ(
        ErrorText(Error(ErrorKind::PasswordProtected, "X.xlsx")),
        "\"X.xlsx\" is protected by a password. Remove the password in the spreadsheet program "
        "and try again.");
}

TEST(ErrorText, PassesOnWhatApplicationAndShellSay)
{
    EXPECT_EQ(ErrorText(Error(ErrorKind::ApplicationFailure, "B6", "Name is taken")),
              "Name is taken");
    EXPECT_EQ(ErrorText(Error(ErrorKind::ShellFailure, "a.xls", "File not found")),
              "File not found");
}

TEST(ErrorText, TakesOtherExceptions)
{
    EXPECT_EQ(ErrorText(std::runtime_error("Some text.")), "Some text.");
    EXPECT_EQ(ErrorText(std::bad_alloc()), "Out of memory. Close other programs and try again.");
    const std::filesystem::filesystem_error file(
        "x", "a.txt", std::make_error_code(std::errc::no_such_file_or_directory));
    EXPECT_EQ(ErrorText(file), "\"a.txt\" cannot be used: No such file or directory.");
}

TEST(ErrorText, ReadsShortErrors)
{
    EXPECT_EQ(ErrorText(OverflowError()), "Overflow: a number is too large for its place.");
    EXPECT_EQ(ErrorText(OutOfRangeError()),
              "Out of range: an entry beyond the end of a list was asked for.");
}

TEST(Error, KeepsItsParts)
{
    const Error error(ErrorKind::DamagedWorkbook, "a.xlsx", "no parts");
    EXPECT_EQ(error.Kind(), ErrorKind::DamagedWorkbook);
    EXPECT_EQ(error.Subject(), "a.xlsx");
    EXPECT_EQ(error.Cause(), "no parts");
    EXPECT_NE(std::string(error.what()).find("a.xlsx: no parts"), std::string::npos);
}

TEST(ErrorReport, BeginsWithItsTwoFixedTexts)
{
    EXPECT_EQ(ErrorReportText("File not found"), "Error!\r\nError Info: File not found");
}

} // namespace
} // namespace orrery::util
