#pragma once

#include "engines/libreoffice/plugin.h"
#include "engines/libreoffice/plugin/office.h"

namespace orrery::libreoffice {

/// Prints with its own instance, which is never shown.
class OfficePdfPrinter : public book::PdfPrinter {
public:
    explicit OfficePdfPrinter(const StartOptions& options) : office_(options) {}
    ~OfficePdfPrinter() override { office_.Quit(); }
    OfficePdfPrinter(const OfficePdfPrinter&) = delete;
    OfficePdfPrinter& operator=(const OfficePdfPrinter&) = delete;

    void Print(const std::filesystem::path& workbook, const std::vector<std::string>& sheets,
               const std::filesystem::path& target) override;

private:
    Office office_;
};

} // namespace orrery::libreoffice
