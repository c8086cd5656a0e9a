#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace orrery::book {

/// Prints workbooks to PDF files, in the background.
class PdfPrinter {
public:
    virtual ~PdfPrinter() = default;
    /// Prints the named sheets, in the workbook's order, without hidden ones. An existing target
    /// stays untouched until the new one is complete. Throws Error (NothingToPrint if none of the
    /// sheets is visible, ApplicationFailure, ApplicationLost).
    virtual void Print(const std::filesystem::path& workbook,
                       const std::vector<std::string>& sheets,
                       const std::filesystem::path& target) = 0;
};

} // namespace orrery::book
