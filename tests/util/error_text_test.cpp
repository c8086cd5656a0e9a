#include "util/error.h"
#include "util/error_report.h"
#include "util/error_text.h"
#include "util/expect_sentences.h"
#include "util/sentence.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace orrery::util {
namespace {

TEST(ErrorText, EveryKindHasItsOwnSentence)
{
    test::ExpectSentences(ErrorKind::ShellFailure, {ErrorKind::ShellFailure});
}

TEST(ErrorText, NamesTheSubject)
{
    for (const ErrorKind kind : test::KindsUpTo(ErrorKind::FileSizeLimit)) {
        if (kind == ErrorKind::Overflow || kind == ErrorKind::OutOfRange)
            continue; // errors without a subject
        test::ExpectSubject(kind);
    }
}

TEST(ErrorText, OmitsAnEmptyFileName)
{
    for (const ErrorKind kind : test::KindsUpTo(ErrorKind::FileSizeLimit)) {
        if (kind < ErrorKind::FileNotFound || kind == ErrorKind::FolderNotCreated)
            continue; // its folder is always known
        test::ExpectNoEmptyName(kind);
    }
}

TEST(ErrorText, ReplacesControlCharactersInNames)
{
    EXPECT_EQ(Printable("a\tb\n\x7F\xC2\x9B c\xC3\xA4"), "a\xEF\xBF\xBD"
                                                         "b\xEF\xBF\xBD\xEF\xBF\xBD"
                                                         "\xEF\xBF\xBD c\xC3\xA4");
    const std::string text = ErrorText(Error(ErrorKind::FileNotReadable, "a\x1B[31m", "b\x07"));
    EXPECT_TRUE(text.starts_with("\"a\xEF\xBF\xBD[31m\" cannot be read: b\xEF\xBF\xBD.")) << text;
}

TEST(ErrorText, ShowsOnlyTheBeginningOfALongText)
{
    const std::string most(80, 'x');
    EXPECT_EQ(QuotedBeginning(most), '"' + most + '"');
    EXPECT_EQ(QuotedBeginning(most + "y"), '"' + most + "...\"");
    const std::string before(79, 'x');
    EXPECT_EQ(QuotedBeginning(before + "\xC3\xA4y"), '"' + before + "...\"")
        << "no character is split";
}

TEST(ErrorText, ShowsTheShellsMessage)
{
    EXPECT_EQ(ErrorText(Error(ErrorKind::ShellFailure, "a.xls", "File not found")),
              "File not found");
}

TEST(ErrorText, AcceptsOtherExceptions)
{
    EXPECT_EQ(ErrorText(std::runtime_error("Some text.")), "Some text.");
    EXPECT_EQ(ErrorText(std::bad_alloc()), "Out of memory. Close other programs and try again.");
    const std::filesystem::filesystem_error file(
        "x", "a.txt", std::make_error_code(std::errc::no_such_file_or_directory));
    EXPECT_EQ(ErrorText(file), "\"a.txt\" cannot be used: No such file or directory.");
}

TEST(ErrorText, FormatsErrorsWithoutASubject)
{
    EXPECT_EQ(ErrorText(OverflowError()), "Overflow: a number is too large for its place.");
    EXPECT_EQ(ErrorText(OutOfRangeError()),
              "Out of range: an entry beyond the end of a list was asked for.");
}

TEST(Error, KeepsKindSubjectAndCause)
{
    const Error error(ErrorKind::FileNotReadable, "a.xlsx", "it is locked");
    EXPECT_EQ(error.Kind(), ErrorKind::FileNotReadable);
    EXPECT_EQ(error.Subject(), "a.xlsx");
    EXPECT_EQ(error.Cause(), "it is locked");
    EXPECT_NE(std::string(error.what()).find("a.xlsx: it is locked"), std::string::npos);
}

TEST(ErrorReport, BeginsWithItsTwoFixedTexts)
{
    EXPECT_EQ(ErrorReportText("File not found"), "Error!\r\nError Info: File not found");
}

} // namespace
} // namespace orrery::util
