#include "book/error.h"

#include "util/error_text.h"
#include "util/expect_sentences.h"

#include <gtest/gtest.h>

namespace orrery::book {
namespace {

using util::Error;
using util::ErrorText;

TEST(BookErrors, HaveOneMessageEach)
{
    test::ExpectSentences(ErrorKind::ApplicationLost, {ErrorKind::ApplicationFailure});
}

TEST(BookErrors, NameTheWorkbookTheSheetTheCellAndTheEngine)
{
    for (const ErrorKind kind : test::KindsUpTo(ErrorKind::EngineMissing))
        test::ExpectSubject(kind);
    test::ExpectSubject(ErrorKind::ApplicationLost);
}

TEST(BookErrors, OmitAnEmptyWorkbookName)
{
    for (const ErrorKind kind : test::KindsUpTo(ErrorKind::TooDeeplyNested))
        test::ExpectNoEmptyName(kind);
    EXPECT_EQ(ErrorText(Error(ErrorKind::DamagedWorkbook, "", "no parts")),
              "The workbook is damaged: no parts. Repair it in the spreadsheet program or use "
              "another copy.");
}

TEST(BookErrors, ReportAPassword)
{
    EXPECT_EQ(
        ErrorText(Error(ErrorKind::PasswordProtected, "X.xlsx")),
        "\"X.xlsx\" is protected by a password. Remove the password in the spreadsheet program "
        "and try again.");
}

TEST(BookErrors, SayWhatTheCopiesOfASheetLack)
{
    EXPECT_EQ(ErrorText(Error(ErrorKind::MacrosNotCopied, "X.xls", "\"dir\" is missing")),
              "\"X.xls\" has macros that cannot be copied: \"dir\" is missing. The copied sheets "
              "have none. Save the template again in the spreadsheet program and generate the "
              "calendar again.");
    EXPECT_EQ(ErrorText(Error(ErrorKind::SignatureNotKept, "X.xls")),
              "\"X.xls\" has signed macros, and the calendar is not signed because its copied "
              "sheets have macros of their own. Sign it in the spreadsheet program.");
}

TEST(BookErrors, SayWhatIsWrongWithAName)
{
    EXPECT_EQ(
        ErrorText(Error(ErrorKind::WrongExtension, "X.xlsx", ".xls")),
        "\"X.xlsx\" is a workbook of another kind than its name says: .xls. Give it the right "
        "ending, or choose the engine \"builtin\".");
    EXPECT_EQ(ErrorText(Error(ErrorKind::PathTooLong, "X.xlsx", "Excel takes 218 characters")),
              "\"X.xlsx\" is too long a path: Excel takes 218 characters. Use folders with shorter "
              "names, or choose the engine \"builtin\".");
}

TEST(BookErrors, ShowTheApplicationsMessage)
{
    EXPECT_EQ(ErrorText(Error(ErrorKind::ApplicationFailure, "B6", "Name is taken")),
              "Name is taken");
}

TEST(BookErrors, DifferFromFileErrors)
{
    EXPECT_NE(util::AnyErrorKind(static_cast<ErrorKind>(3)), static_cast<util::ErrorKind>(3));
}

} // namespace
} // namespace orrery::book
