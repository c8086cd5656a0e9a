#include "look/pdf/plugin/cairo_document.h"

#include <cairo-pdf.h>

namespace orrery::look {
namespace {

cairo_status_t Append(void* bytes, const unsigned char* data, unsigned length)
{
    try {
        static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    }
    catch (const std::exception&) { // no memory, which `Finish` tells
        return CAIRO_STATUS_WRITE_ERROR;
    }
}

} // namespace

CairoDocument::CairoDocument(const char* title)
    : surface_(cairo_pdf_surface_create_for_stream(Append, &bytes_, 1, 1)),
      cairo_(cairo_create(surface_.get()))
{
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_TITLE, title);
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_CREATOR, "Orrery");
    // The same calendar gives the same file.
    cairo_pdf_surface_set_metadata(surface_.get(), CAIRO_PDF_METADATA_CREATE_DATE, "");
}

void CairoDocument::EndPage()
{
    if (!canvas_)
        return;
    canvas_.reset();
    cairo_show_page(cairo_.get());
    cairo_restore(cairo_.get());
}

Canvas& CairoDocument::BeginPage(double width, double height)
{
    EndPage();
    cairo_pdf_surface_set_size(surface_.get(), width / kPixelsPerPoint, height / kPixelsPerPoint);
    cairo_save(cairo_.get());
    cairo_scale(cairo_.get(), 1 / kPixelsPerPoint, 1 / kPixelsPerPoint);
    return canvas_.emplace(cairo_.get(), pictures_);
}

std::string_view CairoDocument::Finish()
{
    EndPage();
    const bool isPainted = cairo_status(cairo_.get()) == CAIRO_STATUS_SUCCESS;
    cairo_.reset();
    cairo_surface_finish(surface_.get());
    const bool isWritten = cairo_surface_status(surface_.get()) == CAIRO_STATUS_SUCCESS;
    return isPainted && isWritten ? std::string_view(bytes_) : std::string_view();
}

} // namespace orrery::look
