#pragma once

#include "book/pdf_printer.h"
#include "book/spreadsheet.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace orrery::book {

/// Opens a saved workbook for the user.
using Opener = std::function<void(const std::filesystem::path&)>;

/// The spreadsheet applications that are available.
class Engines {
public:
    virtual ~Engines() = default;
    /// Resolves a name such as "auto" to the name of an application. Throws Error(EngineMissing).
    virtual std::string Resolve(const std::string& name) const = 0;
    /// Starts an application by its resolved name. If it has no window of its own, it passes the
    /// saved workbook to the opener, which may be empty, when it becomes visible.
    virtual std::unique_ptr<Application> Start(const std::string& name, Opener opener) = 0;

    /// Whether workbooks can be printed to PDF files, whichever application wrote them.
    virtual bool CanPrintPdf() const = 0;
    /// Throws Error (PdfNotAvailable, ApplicationFailure).
    virtual std::unique_ptr<PdfPrinter> StartPdfPrinter() = 0;
};

} // namespace orrery::book
