#include "look/pdf/plugin/cairo_document.h"

#include <exception>

extern "C" orrery::look::PdfDocument* OrreryPdfDocument(const char* title)
{
    try {
        return new orrery::look::CairoDocument(title);
    }
    catch (const std::exception&) { // no memory; the caller tells it
        return nullptr;
    }
}
