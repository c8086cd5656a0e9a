#pragma once

#include "book/patience.h"
#include "book/pdf_printer.h"
#include "book/spreadsheet.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orrery::book {

/// Opens a saved workbook for the user.
using Opener = std::function<void(const std::filesystem::path&)>;

/// What an application is started for.
struct StartRequest {
    /// Gets the saved workbook, when the application becomes visible and has no window of its own.
    /// May be empty.
    Opener opener = {};
    std::vector<std::filesystem::path> files = {}; ///< that the application will open and save
    Patience* patience = nullptr;                  ///< outlives the application; may be null
};

/// Who makes PDF files.
enum class PdfBy {
    Any,     ///< Excel or LibreOffice if one is installed, else the program itself
    BuiltIn, ///< the program itself
    Office   ///< Excel or LibreOffice
};

class WorkbookView;

/// The spreadsheet applications that are available.
class Engines {
public:
    virtual ~Engines() = default;
    /// Resolves a name such as "auto" to the name of an application. Throws Error(EngineMissing).
    virtual std::string Resolve(const std::string& name) const = 0;
    /// Starts an application by its resolved name. Throws Error(PathTooLong) if it cannot open or
    /// save one of the files, Error (EngineMissing, ApplicationFailure) if it does not start.
    virtual std::unique_ptr<Application> Start(const std::string& name, StartRequest request) = 0;

    /// Opens a workbook to look at it, without an application. Throws Error: FileNotFound,
    /// FileNotReadable, NotARegularFile, NotAWorkbook, PasswordProtected, OldBinaryFormat,
    /// BinaryWorkbook, DamagedWorkbook, TooLargeUnpacked.
    virtual std::unique_ptr<WorkbookView> OpenView(const std::filesystem::path& path) = 0;

    /// Whether workbooks can be printed to PDF files, whichever application wrote them.
    virtual bool CanPrintPdf(PdfBy by) const = 0;
    /// The patience outlives the printer and may be null. Throws Error (PdfNotAvailable,
    /// ApplicationFailure).
    virtual std::unique_ptr<PdfPrinter> StartPdfPrinter(PdfBy by, Patience* patience) = 0;
};

} // namespace orrery::book
