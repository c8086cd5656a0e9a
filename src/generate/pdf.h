#pragma once

#include "book/engines.h"
#include "generate/context.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::generate {

/// The path of a workbook's PDF: beside it, ".pdf" in place of its ending. Never the workbook's
/// own.
std::string PdfPath(const std::string& workbookPath);

/// Makes the PDF files that belong to the workbooks of one or more runs. What prints them is
/// started for the first one and ends with this object.
class PdfMaker {
public:
    /// The engines outlive the maker.
    explicit PdfMaker(book::Engines& engines) : engines_(engines) {}

    /// Makes the PDF of these sheets of a saved workbook; one of that name is replaced. Its path.
    /// A failure is reported and gives nothing.
    std::optional<std::string> Make(const std::string& workbookPath,
                                    const std::vector<std::string>& sheets, Context& context);

private:
    void Print(const std::string& workbookPath, const std::vector<std::string>& sheets,
               const std::string& pdfPath);

    book::Engines& engines_;
    std::unique_ptr<book::PdfPrinter> printer_; ///< null until it is needed, and once it is gone
};

} // namespace orrery::generate
