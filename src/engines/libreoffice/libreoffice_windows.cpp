#include "engines/libreoffice/libreoffice.h"

#include "book/error.h"
#include "util/error.h"

// The libraries of LibreOffice for Windows are made by a compiler whose classes those of this
// program cannot meet.

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
