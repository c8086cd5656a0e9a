#include "engines/excel/pdf_printer.h"

#include "engines/excel/paths.h"
#include "util/file_replace.h"
#include "util/program_output.h"

namespace orrery::excel {
namespace {

/// A workbook that is closed at the end of the scope.
class OpenedWorkbook {
public:
    OpenedWorkbook(ExcelApplication& application, const std::filesystem::path& path)
        : application_(application), workbook_(application.OpenWorkbook(path, true))
    {
    }
    ~OpenedWorkbook()
    {
        try {
            workbook_.Close();
        }
        catch (...) {
            // It was only read. An instance that is gone says so when it prints the next one.
        }
        application_.ReleaseWorkbook(workbook_);
    }
    OpenedWorkbook(const OpenedWorkbook&) = delete;
    OpenedWorkbook& operator=(const OpenedWorkbook&) = delete;

    Workbook* operator->() { return &workbook_; }

private:
    ExcelApplication& application_;
    Workbook& workbook_;
};

/// The application adds the extension to a name without it.
std::filesystem::path PathOfOutput()
{
    return std::filesystem::temp_directory_path() /
           ("orrery-" + std::to_string(GetCurrentProcessId()) + ".pdf");
}

} // namespace

ExcelPdfPrinter::ExcelPdfPrinter(std::unique_ptr<ExcelApplication> application)
    : application_(std::move(application))
{
    application_->SetDisplayAlerts(false);
    application_->SetVisible(false);
    application_->SetInteractive(false);
    application_->SetScreenUpdating(false);
}

ExcelPdfPrinter::~ExcelPdfPrinter()
{
    try {
        application_->Quit();
    }
    catch (...) {
        // The application's own destructor ends one that does not quit.
    }
}

void ExcelPdfPrinter::Print(const std::filesystem::path& workbook,
                            const std::vector<std::string>& sheets,
                            const std::filesystem::path& target)
{
    CheckPathLength(workbook);
    util::FileReplacement replacement(target);
    const util::ProgramOutput printed(PathOfOutput());
    OpenedWorkbook(*application_, workbook)->ExportPdf(sheets, printed.Path());
    replacement.CopyFrom(printed.Path());
    replacement.Commit();
}

} // namespace orrery::excel
