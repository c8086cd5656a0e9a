#pragma once

#include "look/cairo/cairo_canvas.h"
#include "look/cairo/owned.h"
#include "look/cairo/pictures.h"
#include "look/pdf/pdf_document.h"

#include <optional>
#include <string>
#include <string_view>

namespace orrery::look {

/// A PDF file, made by Cairo.
class CairoDocument final : public PdfDocument {
public:
    explicit CairoDocument(const char* title);
    Canvas& BeginPage(double width, double height) override;
    std::string_view Finish() override;

private:
    void EndPage();

    std::string bytes_;
    CairoPictures pictures_;
    CairoOwned<cairo_surface_t> surface_;
    CairoOwned<cairo_t> cairo_;
    std::optional<CairoCanvas> canvas_; ///< of the page that is painted
};

} // namespace orrery::look
