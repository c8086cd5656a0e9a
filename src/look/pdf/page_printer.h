#pragma once

#include "book/look/workbook_view.h"
#include "book/pdf_printer.h"

#include <functional>
#include <memory>

namespace orrery::look {

/// Opens a workbook to look at it, as `book::Engines::OpenView`.
using ViewOpener = std::function<std::unique_ptr<book::WorkbookView>(const std::filesystem::path&)>;

/// Prints workbooks by the program itself: what a saved workbook looks like becomes a PDF.
class PagePrinter final : public book::PdfPrinter {
public:
    explicit PagePrinter(ViewOpener open) : open_(std::move(open)) {}
    /// Throws also what opening the workbook and `util::ReplaceFile` throw.
    void Print(const std::filesystem::path& workbook, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override;

private:
    ViewOpener open_;
};

} // namespace orrery::look
