#include "book/error.h"
#include "engines/excel/application.h"
#include "util/error.h"

namespace orrery::excel {

bool IsInstalled()
{
    return false; // Excel can only be reached on Windows
}

std::unique_ptr<book::Application> CreateApplication(const StartOptions& /*options*/)
{
    throw Error(book::ErrorKind::EngineMissing, "excel");
}

std::unique_ptr<book::PdfPrinter> CreatePdfPrinter(const StartOptions& /*options*/)
{
    throw Error(book::ErrorKind::EngineMissing, "excel");
}

} // namespace orrery::excel
