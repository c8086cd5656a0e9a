#include "look/pdf/page_printer.h"

#include "book/error.h"
#include "util/error.h"

#include <gtest/gtest.h>

namespace orrery::look {
namespace {

/// A workbook with a visible sheet "Shown" and a hidden one.
class TwoSheets : public book::WorkbookView {
public:
    TwoSheets()
    {
        workbook_.sheets = {{"Shown"}, {"Hidden"}};
        workbook_.sheets[1].state = book::SheetState::Hidden;
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t /*index*/) override { return sheet_; }

private:
    book::WorkbookLook workbook_;
    book::SheetLook sheet_;
};

void ExpectError(const std::vector<std::string>& sheets, book::ErrorKind kind)
{
    PagePrinter printer([](const auto& /*path*/) { return std::make_unique<TwoSheets>(); });
    try {
        printer.Print("Desk.xlsx", sheets, "Desk.pdf");
        ADD_FAILURE() << "nothing was thrown";
    }
    catch (const Error& error) {
        EXPECT_EQ(error.Kind(), kind);
    }
}

TEST(PagePrinterTest, OnlyVisibleSheetsCount)
{
    ExpectError({"Hidden", "None"}, book::ErrorKind::NothingToPrint);
}

TEST(PagePrinterTest, NeedsTheLibraryBesideTheProgram)
{
    ExpectError({"shown"}, book::ErrorKind::PdfNotAvailable);
}

} // namespace
} // namespace orrery::look
