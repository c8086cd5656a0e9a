#include "ui/wx/preview/page_bitmap.h"

#include "ui/preview.h"
#include "ui/wx/look/wx_canvas.h"
#include "ui/wx/native/text.h"

#include <wx/arrstr.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace orrery::ui::wx {
namespace {

constexpr double kGap = 16; // between papers, in pixels at 96 dpi
constexpr unsigned char kExampleBrightness = 255;

std::size_t PaperCount(const look::Layout& layout)
{
    return std::min(layout.pages.size(), Preview::kMostPapers);
}

} // namespace

wxColour DeskColour()
{
    constexpr int kDarker = 88; // percent
    return wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE).ChangeLightness(kDarker);
}

void PaintSentence(wxDC& dc, const wxWindow& window, const std::string& sentence, int margin)
{
    const wxRect place = wxRect(window.GetClientSize()).Deflate(margin);
    dc.SetFont(window.GetFont());
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    wxString lines;
    wxString line;
    for (const wxString& word : wxSplit(ToWx(sentence), ' ', '\0')) {
        const wxString longer = line.empty() ? word : line + ' ' + word;
        if (!line.empty() && dc.GetTextExtent(longer).x > place.width) {
            lines += line + '\n';
            line = word;
        }
        else
            line = longer;
    }
    dc.DrawLabel(lines + line, place, wxALIGN_CENTRE);
}

wxSize PapersSize(const look::Layout& layout)
{
    double width = 1;
    double height = 0;
    for (std::size_t page = 0; page < PaperCount(layout); ++page) {
        width = std::max(width, layout.pages[page].paperWidth);
        height += layout.pages[page].paperHeight + (page == 0 ? 0 : kGap);
    }
    return {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(std::max(height, 1.0)))};
}

void PaintPapers(look::SheetPicture& picture, wxGraphicsContext& target, PictureCache& pictures,
                 double scale)
{
    const look::Layout& layout = picture.Layout();
    double top = 0;
    for (std::size_t page = 0; page < PaperCount(layout); ++page) {
        const look::PageBox& paper = layout.pages[page];
        target.SetPen(*wxLIGHT_GREY_PEN);
        target.SetBrush(*wxWHITE_BRUSH);
        target.DrawRectangle(0, top * scale, paper.paperWidth * scale - 1,
                             paper.paperHeight * scale - 1);
        WxCanvas canvas(target, pictures);
        canvas.Place({0, top * scale}, scale);
        picture.PaintPage(page, canvas);
        top += paper.paperHeight + kGap;
    }
}

wxBitmap PapersBitmap(look::SheetPicture& picture, PictureCache& pictures, double scale,
                      bool isExample)
{
    const wxSize size = PapersSize(picture.Layout());
    wxBitmap bitmap(std::max(1, static_cast<int>(std::lround(size.x * scale))),
                    std::max(1, static_cast<int>(std::lround(size.y * scale))), 24);
    wxMemoryDC memory(bitmap);
    memory.SetBackground(DeskColour());
    memory.Clear();
    const std::unique_ptr<wxGraphicsContext> context(wxGraphicsContext::Create(memory));
    if (context)
        PaintPapers(picture, *context, pictures, scale);
    memory.SelectObject(wxNullBitmap);
    return isExample ? bitmap.ConvertToDisabled(kExampleBrightness) : bitmap;
}

} // namespace orrery::ui::wx
