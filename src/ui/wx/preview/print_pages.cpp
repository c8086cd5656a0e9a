#include "ui/wx/preview/print_pages.h"

#include "ui/wx/look/wx_canvas.h"

#include <wx/graphics.h>
#include <wx/paper.h>
#include <wx/printdlg.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace orrery::ui::wx {
namespace {

/// The paper of the first page, as it lies.
wxPrintData PaperOf(Preview& preview)
{
    wxPrintData data;
    const look::SheetPicture* const picture = preview.Picture(0);
    if (picture == nullptr || picture->Layout().pages.empty())
        return data;
    const look::PageBox& page = picture->Layout().pages.front();
    constexpr double kMillimetres = 25.4 / look::kPixelsPerInch; // in a pixel
    const bool isLandscape = page.paperWidth > page.paperHeight;
    data.SetOrientation(isLandscape ? wxLANDSCAPE : wxPORTRAIT);
    data.SetPaperId(wxPAPER_NONE);
    const wxSize upright(
        static_cast<int>(std::lround(std::min(page.paperWidth, page.paperHeight) * kMillimetres)),
        static_cast<int>(std::lround(std::max(page.paperWidth, page.paperHeight) * kMillimetres)));
    data.SetPaperSize(upright);
    if (wxThePrintPaperDatabase != nullptr) {
        const wxPaperSize known = wxThePrintPaperDatabase->GetSize(upright * 10);
        if (known != wxPAPER_NONE)
            data.SetPaperId(known);
    }
    return data;
}

} // namespace

PagesPrintout::PagesPrintout(Preview& preview, PictureCache& pictures)
    : wxPrintout("Orrery"), preview_(preview), pictures_(pictures)
{
    for (std::size_t page = 0; page < preview.Pages().size(); ++page) {
        const look::SheetPicture* const picture = preview.Picture(page);
        const std::size_t count = picture == nullptr ? 0 : picture->Layout().pages.size();
        for (std::size_t paper = 0; paper < count; ++paper)
            papers_.push_back({page, paper});
    }
}

bool PagesPrintout::HasPage(int number)
{
    return number >= 1 && static_cast<std::size_t>(number) <= papers_.size();
}

void PagesPrintout::GetPageInfo(int* first, int* last, int* from, int* to)
{
    *first = *from = 1;
    *last = *to = static_cast<int>(papers_.size());
}

bool PagesPrintout::OnPrintPage(int number)
{
    if (!HasPage(number))
        return false;
    const Paper& wanted = papers_[static_cast<std::size_t>(number) - 1];
    look::SheetPicture* const picture = preview_.Picture(wanted.page);
    const std::unique_ptr<wxGraphicsContext> context(
        wxGraphicsContext::CreateFromUnknownDC(*GetDC()));
    if (picture == nullptr || !context)
        return false;
    // The printer may have another paper: the page is made as large as it can be there.
    const look::PageBox& page = picture->Layout().pages.at(wanted.paper);
    const wxRect paper = GetPaperRectPixels();
    const double scale = std::min(paper.width / page.paperWidth, paper.height / page.paperHeight);
    WxCanvas canvas(*context, pictures_);
    canvas.Place({static_cast<double>(paper.x), static_cast<double>(paper.y)}, scale);
    picture->PaintPage(wanted.paper, canvas, look::LinesLie::OnEdges);
    return true;
}

void PrintPages(wxWindow& parent, Preview& preview, PictureCache& pictures)
{
    if (preview.Pages().empty())
        return;
    wxPrintDialogData dialog(PaperOf(preview));
    PagesPrintout printout(preview, pictures);
    wxPrinter printer(&dialog);
    printer.Print(&parent, &printout, true);
}

} // namespace orrery::ui::wx
