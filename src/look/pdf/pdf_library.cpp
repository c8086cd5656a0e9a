#include "look/pdf/pdf_library.h"

#include "book/error.h"
#include "util/error.h"
#include "util/paths.h"
#include "util/plugin/plugin.h"

namespace orrery::look {
namespace {

constexpr const char* kLibrary = "orrery-pdf";

PdfFunction LoadLibrary()
{
    const auto library = util::FindPlugin(kLibrary);
    if (!library)
        throw Error(book::ErrorKind::PdfNotAvailable, "builtin");
    void* const function = util::LoadPluginFunction(*library, kPdfFunction);
    if (function == nullptr)
        throw Error(book::ErrorKind::ApplicationFailure, util::FromPath(*library),
                    "The library " + util::FromPath(*library) +
                        " cannot be loaded. Install Orrery again.");
    return reinterpret_cast<PdfFunction>(function);
}

} // namespace

bool CanWritePdf()
{
    return util::FindPlugin(kLibrary).has_value();
}

std::unique_ptr<PdfDocument> MakePdfDocument(const std::string& title)
{
    static const PdfFunction make = LoadLibrary();
    std::unique_ptr<PdfDocument> document(make(title.c_str()));
    if (!document)
        throw Error(book::ErrorKind::ApplicationFailure, title,
                    "There is not enough memory for a PDF.");
    return document;
}

} // namespace orrery::look
