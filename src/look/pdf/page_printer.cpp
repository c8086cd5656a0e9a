#include "look/pdf/page_printer.h"

#include "book/error.h"
#include "look/display/now.h"
#include "look/display/sheet_picture.h"
#include "look/pdf/pdf_library.h"
#include "look/text/font_tables.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace orrery::look {
namespace {

/// The indexes of the visible ones, in the workbook's order.
std::vector<std::size_t> VisibleSheets(const book::WorkbookLook& workbook,
                                       const std::vector<std::string>& names)
{
    std::vector<std::size_t> visible;
    for (std::size_t sheet = 0; sheet < workbook.sheets.size(); ++sheet) {
        const book::SheetSummary& summary = workbook.sheets[sheet];
        const bool isNamed = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return util::EqualIgnoringCase(name, summary.name);
        });
        if (isNamed && summary.state == book::SheetState::Visible)
            visible.push_back(sheet);
    }
    return visible;
}

/// Whether a header or a footer may tell how many pages there are.
bool CountsPages(const book::PageSetup& setup)
{
    const auto counts = [](const std::string& text) { return text.find("&N") != text.npos; };
    const auto mayCount = [&](const std::optional<std::string>& text) {
        return text && counts(*text);
    };
    return counts(setup.header) || counts(setup.footer) || mayCount(setup.firstHeader) ||
           mayCount(setup.firstFooter) || mayCount(setup.evenHeader) || mayCount(setup.evenFooter);
}

/// The sheets of one PDF: their pages are numbered through.
class Printing {
public:
    Printing(book::WorkbookView& view, std::vector<std::size_t> sheets,
             const std::filesystem::path& workbook)
        : view_(view), sheets_(std::move(sheets))
    {
        options_.now = LocalSerial(std::time(nullptr));
        options_.fileName = util::FromPath(workbook.filename());
        options_.folder = util::FromPath(workbook.parent_path() / "");
        if (std::any_of(sheets_.begin(), sheets_.end(),
                        [&](std::size_t sheet) { return CountsPages(view_.Sheet(sheet).page); }))
            CountPages();
    }
    /// Returns how many pages there were.
    std::size_t Paint(PdfDocument& document)
    {
        std::size_t count = 0;
        options_.firstPage = 1;
        for (const std::size_t sheet : sheets_) {
            SheetPicture picture(view_, sheet, fonts_, options_);
            const auto& pages = picture.Layout().pages;
            for (std::size_t page = 0; page < pages.size(); ++page)
                picture.PaintPage(
                    page, document.BeginPage(pages[page].paperWidth, pages[page].paperHeight));
            count += pages.size();
            GoOn(view_.Sheet(sheet).page, pages.size());
        }
        return count;
    }

private:
    void CountPages()
    {
        std::size_t count = 0;
        for (const std::size_t sheet : sheets_)
            count += SheetPicture(view_, sheet, fonts_, options_).Layout().pages.size();
        options_.allPages = static_cast<std::int32_t>(count);
    }
    /// The number of the page that follows those of a sheet.
    void GoOn(const book::PageSetup& setup, std::size_t pages)
    {
        if (setup.firstPageNumber != 1)
            options_.firstPage = setup.firstPageNumber;
        options_.firstPage += static_cast<std::int32_t>(pages);
    }

    book::WorkbookView& view_;
    std::vector<std::size_t> sheets_;
    FontTables fonts_;
    PictureOptions options_;
};

} // namespace

void PagePrinter::Print(const std::filesystem::path& workbook,
                        const std::vector<std::string>& sheets, const std::filesystem::path& target)
{
    const auto view = open_(workbook);
    auto visible = VisibleSheets(view->Workbook(), sheets);
    if (visible.empty())
        throw Error(book::ErrorKind::NothingToPrint);
    const auto document = MakePdfDocument(util::FromPath(workbook.stem()));
    if (Printing(*view, std::move(visible), workbook).Paint(*document) == 0)
        throw Error(book::ErrorKind::NothingToPrint);
    const std::string_view bytes = document->Finish();
    if (bytes.empty())
        throw Error(book::ErrorKind::ApplicationFailure, util::FromPath(target),
                    "There is not enough memory for a PDF.");
    util::ReplaceFile(target, bytes);
}

} // namespace orrery::look
