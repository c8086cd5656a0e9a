#pragma once

#include "look/pdf/pdf_document.h"

#include <memory>
#include <string>

namespace orrery::look {

/// Whether the library that writes PDF files is beside the program.
bool CanWritePdf();

/// A new PDF file. Loads the library when it is first needed. Throws Error (PdfNotAvailable,
/// ApplicationFailure).
std::unique_ptr<PdfDocument> MakePdfDocument(const std::string& title);

} // namespace orrery::look
