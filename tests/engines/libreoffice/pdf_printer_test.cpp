#include "engines/libreoffice/plugin/pdf_printer.h"

#include "book/error.h"
#include "office.h"
#include "places/places.h"
#include "processes.h"
#include "util/error.h"
#include "util/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace orrery::libreoffice {
namespace {

using book::ErrorKind;
using testing::IsEmpty;
using testing::StartsWith;

/// The tests of the command line check the pages themselves.
class PdfPrinterTest : public testing::Test {
protected:
    PdfPrinterTest() { folder_.Write("target.pdf", "an earlier one"); }

    std::optional<util::AnyErrorKind> Print(const char* workbook,
                                            const std::vector<std::string>& sheets)
    {
        try {
            printer_.Print(places::SourceFolder() / "tests/engines/libreoffice/data" / workbook,
                           sheets, folder_ / "target.pdf");
            return std::nullopt;
        }
        catch (const Error& error) {
            return error.Kind();
        }
    }
    std::string Target() const { return testing_support::BytesOf(folder_ / "target.pdf"); }

    testing_support::ScratchFolder folder_;
    OfficePdfPrinter printer_{test::Options()};
};

TEST_F(PdfPrinterTest, PrintsOneWorkbookAfterTheOther)
{
    EXPECT_EQ(Print("guards.xlsx", {"Locked"}), std::nullopt);
    const std::string one = Target();
    EXPECT_THAT(one, StartsWith("%PDF-"));
    EXPECT_EQ(Print("guards.xlsx", {"Arrays", "Locked"}), std::nullopt);
    EXPECT_GT(Target().size(), one.size());
}

TEST_F(PdfPrinterTest, PrintsAWorkbookWhoseStructureIsProtected)
{
    EXPECT_EQ(Print("structure.xls", {"Month"}), std::nullopt);
    EXPECT_THAT(Target(), StartsWith("%PDF-"));
}

TEST_F(PdfPrinterTest, WithoutASheetToPrintTheTargetStays)
{
    EXPECT_EQ(Print("guards.xlsx", {}), ErrorKind::NothingToPrint);
    EXPECT_EQ(Print("guards.xlsx", {"Absent"}), ErrorKind::NothingToPrint);
    EXPECT_EQ(Target(), "an earlier one");
    EXPECT_EQ(Print("guards.xlsx", {"Locked"}), std::nullopt) << "the printer goes on";
}

TEST_F(PdfPrinterTest, ReportsALostInstanceAndLeavesTheTarget)
{
    EXPECT_EQ(test::SignalOffice(SIGKILL), 1);
    EXPECT_EQ(Print("guards.xlsx", {"Locked"}), ErrorKind::ApplicationLost);
    EXPECT_EQ(Target(), "an earlier one");
}

TEST(PdfPrinterEndTest, LeavesNoProcess)
{
    std::optional<OfficePdfPrinter> printer(test::Options());
    EXPECT_FALSE(test::Descendants().empty());
    printer.reset();
    EXPECT_THAT(test::Descendants(), IsEmpty());
}

} // namespace
} // namespace orrery::libreoffice
