#include "generate/pdf.h"

#include "book/error.h"
#include "generate/failure.h"
#include "util/error.h"
#include "util/error_text.h"
#include "util/paths.h"
#include "util/text.h"

#include <exception>

namespace orrery::generate {

std::string PdfPath(const std::string& workbookPath)
{
    const std::string name = util::FileName(workbookPath);
    const std::string folder = workbookPath.substr(0, workbookPath.size() - name.size());
    const std::string pdfName = util::BaseName(name) + ".pdf";
    const bool isWorkbook = util::EqualIgnoringCase(pdfName, name); // must not be overwritten
    return folder + (isWorkbook ? name + ".pdf" : pdfName);
}

std::optional<std::string> PdfMaker::Make(const std::string& workbookPath,
                                          const std::vector<std::string>& sheets, Context& context)
{
    const std::string pdfPath = PdfPath(workbookPath);
    try {
        context.observer.Printing(pdfPath);
        Print(workbookPath, sheets, pdfPath);
        return pdfPath;
    }
    catch (const std::exception& error) {
        if (IsApplicationLost(error))
            printer_.reset(); // start a new one for the next workbook
        context.observer.Report("Failed to make the PDF file.\r\n" + util::ErrorText(error));
        return std::nullopt;
    }
}

void PdfMaker::Print(const std::string& workbookPath, const std::vector<std::string>& sheets,
                     const std::string& pdfPath)
{
    if (sheets.empty())
        throw Error(book::ErrorKind::NothingToPrint);
    if (!printer_)
        printer_ = engines_.StartPdfPrinter(by_, patience_);
    printer_->Print(util::ToPath(workbookPath), sheets, util::ToPath(pdfPath));
}

} // namespace orrery::generate
