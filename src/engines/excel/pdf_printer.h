#pragma once

#include "book/pdf_printer.h"
#include "engines/excel/excel_application.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace orrery::excel {

/// Prints with an instance of its own, which is never shown and ends with this object.
class ExcelPdfPrinter : public book::PdfPrinter {
public:
    explicit ExcelPdfPrinter(std::unique_ptr<ExcelApplication> application);
    ~ExcelPdfPrinter() override;
    ExcelPdfPrinter(const ExcelPdfPrinter&) = delete;
    ExcelPdfPrinter& operator=(const ExcelPdfPrinter&) = delete;

    /// Throws also Error(PathTooLong) for the workbook.
    void Print(const std::filesystem::path& workbook, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override;

private:
    std::unique_ptr<ExcelApplication> application_;
};

} // namespace orrery::excel
