#pragma once

#include "book/pdf_printer.h"
#include "book/spreadsheet.h"
#include "engines/excel/start_options.h"

#include <memory>

namespace orrery::excel {

/// Whether Excel is registered on this machine. Throws Error(ApplicationFailure) if that cannot be
/// found out.
bool IsInstalled();

/// Starts a separate instance that is not visible; one that the user has open is never used. It
/// goes on running after it was made visible; otherwise it ends with the object. Throws
/// Error(EngineMissing) if there is no Excel, Error(PathTooLong) before it is started if it cannot
/// open or save one of the files, Error(ApplicationFailure) if it does not start.
std::unique_ptr<book::Application> CreateApplication(const StartOptions& options = {});

/// Starts an instance that makes PDF files and is never shown. Throws as `CreateApplication`.
std::unique_ptr<book::PdfPrinter> CreatePdfPrinter(const StartOptions& options = {});

} // namespace orrery::excel
