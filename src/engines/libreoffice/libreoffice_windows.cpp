#include "engines/libreoffice/libreoffice.h"

#include "book/error.h"
#include "util/error.h"

// LibreOffice for Windows is built by another compiler, whose classes are incompatible with those
// of this program.

namespace orrery::libreoffice {

bool IsInstalled()
{
    return false;
}

std::unique_ptr<book::Application> CreateApplication(StructureReader /*hasProtectedStructure*/)
{
    throw Error(book::ErrorKind::EngineMissing, "libreoffice");
}

std::unique_ptr<book::PdfPrinter> CreatePdfPrinter()
{
    throw Error(book::ErrorKind::EngineMissing, "libreoffice");
}

} // namespace orrery::libreoffice
