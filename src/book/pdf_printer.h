#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace orrery::book {

/// Makes PDF files of workbooks, out of sight.
class PdfPrinter {
public:
    virtual ~PdfPrinter() = default;
    /// The pages of the named sheets, in the workbook's order; a hidden sheet has none. An existing
    /// target stays untouched until the new one is complete. Throws Error (NothingToPrint where
    /// none of the sheets can be seen, ApplicationFailure, ApplicationLost).
    virtual void Print(const std::filesystem::path& workbook,
                       const std::vector<std::string>& sheets,
                       const std::filesystem::path& target) = 0;
};

} // namespace orrery::book
