#pragma once

#include "book/spreadsheet.h"
#include "engines/libreoffice/plugin.h"

#include <memory>

/// LibreOffice as this program sees it. A library beside it, loaded on demand, does the rest, so
/// the program itself does not depend on LibreOffice.
namespace orrery::libreoffice {

/// Whether LibreOffice is on this machine and the library beside the program.
bool IsInstalled();

/// Starts a separate instance without a visible window; the user's profile and documents are not
/// touched. It goes on running after it was made visible; otherwise, and if there is no display, it
/// ends with the object. Throws Error(EngineMissing) if there is no LibreOffice,
/// Error(ApplicationFailure) if it does not start.
std::unique_ptr<book::Application> CreateApplication(StructureReader hasProtectedStructure);

/// Starts an instance that makes PDF files. Throws as `CreateApplication`.
std::unique_ptr<book::PdfPrinter> CreatePdfPrinter();

} // namespace orrery::libreoffice
