#pragma once

#include "ui/preview.h"
#include "ui/wx/look/picture_cache.h"

#include <wx/print.h>

#include <cstddef>
#include <vector>

namespace orrery::ui::wx {

/// The papers of all pages of a preview, as they are printed.
class PagesPrintout : public wxPrintout {
public:
    PagesPrintout(Preview& preview, PictureCache& pictures);

    bool HasPage(int number) override;
    void GetPageInfo(int* first, int* last, int* from, int* to) override;
    bool OnPrintPage(int number) override;

private:
    struct Paper {
        std::size_t page = 0;  ///< of the preview
        std::size_t paper = 0; ///< of the page
    };

    Preview& preview_;
    PictureCache& pictures_;
    std::vector<Paper> papers_;
};

/// Asks with the system's print dialog, and prints the pages. What fails is told there.
void PrintPages(wxWindow& parent, Preview& preview, PictureCache& pictures);

} // namespace orrery::ui::wx
