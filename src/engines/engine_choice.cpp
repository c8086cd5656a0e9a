#include "engines/engine_choice.h"

#include "book/error.h"
#include "engines/builtin/application.h"
#include "engines/builtin/open_view.h"
#include "engines/builtin/opening_check.h"
#include "engines/builtin/structure_protection.h"
#include "engines/excel/application.h"
#include "engines/libreoffice/libreoffice.h"
#include "look/pdf/page_printer.h"
#include "look/pdf/pdf_library.h"
#include "util/error.h"
#include "util/text.h"

#include <array>
#include <utility>

namespace orrery::engines {
namespace {

constexpr std::array<std::pair<EngineChoice, std::string_view>, 4> kNames = {{
    {EngineChoice::Auto, "auto"},
    {EngineChoice::Excel, "excel"},
    {EngineChoice::BuiltIn, "builtin"},
    {EngineChoice::LibreOffice, "libreoffice"},
}};

EngineChoice ChoiceOf(const std::string& name)
{
    const auto choice = ParseEngineChoice(name);
    if (!choice)
        throw Error(book::ErrorKind::EngineMissing, name);
    return *choice;
}

/// Whether a spreadsheet program is installed that prints to PDF files. Throws as
/// `excel::IsInstalled`.
bool HasOffice()
{
    return libreoffice::IsInstalled() || excel::IsInstalled();
}

} // namespace

std::optional<EngineChoice> ParseEngineChoice(std::string_view name)
{
    for (const auto& [choice, known] : kNames) {
        if (util::EqualIgnoringCase(name, known))
            return choice;
    }
    return std::nullopt;
}

std::string_view EngineName(EngineChoice choice)
{
    for (const auto& [known, name] : kNames) {
        if (known == choice)
            return name;
    }
    return {};
}

EngineChoice ResolveEngine(EngineChoice choice)
{
    switch (choice) {
    case EngineChoice::Auto:
        return excel::IsInstalled() ? EngineChoice::Excel : EngineChoice::BuiltIn;
    case EngineChoice::BuiltIn:
        return choice; // part of the program itself
    case EngineChoice::Excel:
        if (excel::IsInstalled())
            return choice;
        break;
    case EngineChoice::LibreOffice:
        if (libreoffice::IsInstalled())
            return choice;
        break;
    }
    throw Error(book::ErrorKind::EngineMissing, std::string(EngineName(choice)));
}

std::unique_ptr<book::Application> CreateApplication(EngineChoice choice,
                                                     book::StartRequest request)
{
    switch (ResolveEngine(choice)) {
    case EngineChoice::Excel:
        return excel::CreateApplication(
            {builtin::CheckBeforeOpening, std::move(request.files), request.patience});
    case EngineChoice::LibreOffice:
        return libreoffice::CreateApplication(builtin::HasProtectedStructure);
    default:
        return builtin::CreateApplication(std::move(request.opener));
    }
}

std::string InstalledEngines::Resolve(const std::string& name) const
{
    return std::string(EngineName(ResolveEngine(ChoiceOf(name))));
}

std::unique_ptr<book::Application> InstalledEngines::Start(const std::string& name,
                                                           book::StartRequest request)
{
    return CreateApplication(ChoiceOf(name), std::move(request));
}

std::unique_ptr<book::WorkbookView> InstalledEngines::OpenView(const std::filesystem::path& path)
{
    return builtin::OpenWorkbookView(path);
}

bool InstalledEngines::CanPrintPdf(book::PdfBy by) const
{
    if (by == book::PdfBy::BuiltIn)
        return look::CanWritePdf();
    try {
        return HasOffice() || (by == book::PdfBy::Any && look::CanWritePdf());
    }
    catch (const Error&) { // nobody knows, so it is not offered
        return false;
    }
}

std::unique_ptr<book::PdfPrinter> InstalledEngines::StartPdfPrinter(book::PdfBy by,
                                                                    book::Patience* patience)
{
    if (by != book::PdfBy::BuiltIn && libreoffice::IsInstalled())
        return libreoffice::CreatePdfPrinter();
    if (by != book::PdfBy::BuiltIn && excel::IsInstalled())
        return excel::CreatePdfPrinter({builtin::CheckBeforeOpening, {}, patience});
    if (by != book::PdfBy::Office && look::CanWritePdf())
        return std::make_unique<look::PagePrinter>(builtin::OpenWorkbookView);
    throw Error(book::ErrorKind::PdfNotAvailable, by == book::PdfBy::BuiltIn ? "builtin" : "");
}

} // namespace orrery::engines
