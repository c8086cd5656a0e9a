#pragma once

#include "book/pdf_printer.h"
#include "book/spreadsheet.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>

/// What the program and the library that knows LibreOffice say to each other. Both are built
/// together, so that classes may pass between them.
namespace orrery::libreoffice {

/// How long an instance is waited for.
struct Patience {
    std::chrono::milliseconds start = std::chrono::minutes(1);
    /// A call in which LibreOffice does not compute at all for so long is given up, with the
    /// instance.
    std::chrono::milliseconds idle = std::chrono::seconds(30);
    std::chrono::milliseconds call = std::chrono::minutes(10); ///< any one call
    std::chrono::milliseconds quit = std::chrono::seconds(10);
};

/// Whether a template protects the names and the order of its sheets, which LibreOffice does not
/// read of an .xlsx file.
using StructureReader = std::function<bool(const std::filesystem::path&)>;

/// What an instance is started with.
struct StartOptions {
    std::filesystem::path programFolder; ///< the folder of LibreOffice that holds soffice
    std::filesystem::path profiles;      ///< a folder of Orrery's own, made when it is missing
    bool hasDisplay = false;             ///< without one nothing can be shown: it ends with the run
    StructureReader hasProtectedStructure; ///< may be empty: no template does
    Patience patience;
};

/// The library's two services. Both throw Error (ApplicationFailure, ApplicationLost).
class Plugin {
public:
    virtual ~Plugin() = default;
    virtual std::unique_ptr<book::Application> StartApplication(const StartOptions& options) = 0;
    virtual std::unique_ptr<book::PdfPrinter> StartPdfPrinter(const StartOptions& options) = 0;
};

/// The name under which the library gives its plug-in, and the function's type. The plug-in lives
/// as long as the program.
inline constexpr const char* kPluginFunction = "OrreryLibreOfficePlugin";
using PluginFunction = Plugin* (*)();

} // namespace orrery::libreoffice
