#pragma once

#include "engines/engine_choice.h"

#include <fstream>
#include <memory>

namespace orrery::ui::wx {

/// Writes the names of the sheets, one per line, instead of a PDF.
class TestPrinter : public book::PdfPrinter {
public:
    void Print(const std::filesystem::path& /*workbook*/, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override
    {
        std::ofstream stream(target);
        for (const std::string& sheet : sheets)
            stream << sheet << '\n';
    }
};

/// The installed applications, with a PDF printer if the test wants one.
class TestEngines : public engines::InstalledEngines {
public:
    explicit TestEngines(bool printsPdf) : printsPdf_(printsPdf) {}
    bool CanPrintPdf() const override { return printsPdf_; }
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter() override
    {
        return std::make_unique<TestPrinter>();
    }

private:
    const bool printsPdf_;
};

} // namespace orrery::ui::wx
