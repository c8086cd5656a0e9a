#pragma once

#include "book/engines.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::engines {

/// Which spreadsheet application does the work.
enum class EngineChoice {
    Auto, ///< Excel if it is installed, else the built-in one
    Excel,
    BuiltIn,
    LibreOffice,
};

/// "auto", "excel", "builtin" or "libreoffice", without regard to case.
std::optional<EngineChoice> ParseEngineChoice(std::string_view name);
/// The name that `ParseEngineChoice` reads.
std::string_view EngineName(EngineChoice choice);

/// The engine that the choice means on this machine; never Auto. Throws Error(EngineMissing) if it
/// is not installed.
EngineChoice ResolveEngine(EngineChoice choice);

/// Starts the chosen application. When the built-in one is made visible, it passes the last saved
/// workbook to the opener, if there is one. Throws as `ResolveEngine` and as
/// `book::Engines::Start`.
std::unique_ptr<book::Application> CreateApplication(EngineChoice choice,
                                                     book::StartRequest request);

/// The applications of this build, by the names above.
class InstalledEngines : public book::Engines {
public:
    std::string Resolve(const std::string& name) const override;
    std::unique_ptr<book::Application> Start(const std::string& name,
                                             book::StartRequest request) override;
    std::unique_ptr<book::WorkbookView> OpenView(const std::filesystem::path& path) override;
    bool CanPrintPdf(book::PdfBy by) const override;
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter(book::PdfBy by,
                                                      book::Patience* patience) override;
};

} // namespace orrery::engines
