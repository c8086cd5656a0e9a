#pragma once

#include "book/engines.h"
#include "generate/context.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::generate {

/// The path of a workbook's PDF: beside it, with the extension ".pdf". Never the workbook's own
/// path.
std::string PdfPath(const std::string& workbookPath);

/// Makes the PDF files of one or more runs. The printer is started for the first one and ends with
/// this object.
class PdfMaker {
public:
    /// `engines` and `patience`, which may be null, must outlive the object.
    PdfMaker(book::Engines& engines, book::PdfBy by, book::Patience* patience = nullptr)
        : engines_(engines), by_(by), patience_(patience)
    {
    }

    /// Prints these sheets of a saved workbook to a PDF, replacing an old one, and returns its
    /// path. Reports a failure and returns nothing.
    std::optional<std::string> Make(const std::string& workbookPath,
                                    const std::vector<std::string>& sheets, Context& context);

private:
    void Print(const std::string& workbookPath, const std::vector<std::string>& sheets,
               const std::string& pdfPath);

    book::Engines& engines_;
    book::PdfBy by_;
    book::Patience* patience_;
    std::unique_ptr<book::PdfPrinter> printer_; ///< null until it is needed, and after it is lost
};

} // namespace orrery::generate
