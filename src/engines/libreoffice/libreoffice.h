#pragma once

#include "book/spreadsheet.h"
#include "engines/libreoffice/plugin.h"

#include <memory>

/// LibreOffice as this program sees it: a library beside it, loaded when it is asked for, knows the
/// rest, so that the program itself needs no LibreOffice.
namespace orrery::libreoffice {

/// Whether LibreOffice is on this machine, and the library beside the program.
bool IsInstalled();

/// Starts an instance of its own, out of sight; the user's profile and documents are not touched.
/// It goes on running once it was made visible; else, and where there is no display, it ends with
/// the object. Throws Error(EngineMissing) where there is no LibreOffice, Error(ApplicationFailure)
/// where it does not start.
std::unique_ptr<book::Application> CreateApplication(StructureReader hasProtectedStructure);

/// Starts an instance that makes PDF files. Throws as `CreateApplication`.
std::unique_ptr<book::PdfPrinter> CreatePdfPrinter();

} // namespace orrery::libreoffice
