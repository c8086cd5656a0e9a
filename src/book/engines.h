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

/// The spreadsheet applications that a main program offers.
class Engines {
public:
    virtual ~Engines() = default;
    /// The application that a name such as "auto" stands for. Throws Error(EngineMissing).
    virtual std::string Resolve(const std::string& name) const = 0;
    /// Starts one by its resolved name. One that has no window of its own hands the saved workbook
    /// to the opener, which may be empty, when it becomes visible.
    virtual std::unique_ptr<Application> Start(const std::string& name, Opener opener) = 0;

    /// Whether something here makes PDF files of workbooks, whichever application wrote them.
    virtual bool CanPrintPdf() const = 0;
    /// Starts it. Throws Error (PdfNotAvailable, ApplicationFailure).
    virtual std::unique_ptr<PdfPrinter> StartPdfPrinter() = 0;
};

} // namespace orrery::book
