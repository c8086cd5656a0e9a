#pragma once

#include "book/pdf_printer.h"
#include "book/spreadsheet.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

/// The interface between the program and the library that knows LibreOffice. Both are built
/// together, so classes may be passed between them.
namespace orrery::libreoffice {

/// How long to wait for an instance.
struct Timeouts {
    std::chrono::milliseconds start = std::chrono::minutes(1);
    /// A call during which LibreOffice does not compute for this long is given up, together with
    /// the instance.
    std::chrono::milliseconds idle = std::chrono::seconds(30);
    std::chrono::milliseconds call = std::chrono::minutes(10); ///< any one call
    std::chrono::milliseconds quit = std::chrono::seconds(10);
};

/// Whether a template protects the names and the order of its sheets, which LibreOffice does not
/// read from an .xlsx file.
using StructureReader = std::function<bool(const std::filesystem::path&)>;

/// What an instance is started with.
struct StartOptions {
    std::filesystem::path programFolder;   ///< the folder of LibreOffice that contains soffice
    std::filesystem::path profiles;        ///< a folder of this program, created if it is missing
    bool hasDisplay = false;               ///< if false, the instance ends with the run
    StructureReader hasProtectedStructure; ///< may be empty: no template does
    Timeouts timeouts;
};

/// The two services of the library. Both throw Error (ApplicationFailure, ApplicationLost).
class Plugin {
public:
    virtual ~Plugin() = default;
    virtual std::unique_ptr<book::Application> StartApplication(const StartOptions& options) = 0;
    virtual std::unique_ptr<book::PdfPrinter> StartPdfPrinter(const StartOptions& options) = 0;
};

/// The exported function that returns the plug-in, and its type. The plug-in lives as long as the
/// program.
inline constexpr const char* kPluginFunction = "OrreryLibreOfficePlugin";
using PluginFunction = Plugin* (*)();

} // namespace orrery::libreoffice
