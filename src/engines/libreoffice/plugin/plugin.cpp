#include "engines/libreoffice/plugin.h"

#include "engines/libreoffice/plugin/office_application.h"
#include "engines/libreoffice/plugin/pdf_printer.h"

namespace orrery::libreoffice {
namespace {

class OfficePlugin : public Plugin {
public:
    std::unique_ptr<book::Application> StartApplication(const StartOptions& options) override
    {
        return std::make_unique<OfficeApplication>(options);
    }
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter(const StartOptions& options) override
    {
        return std::make_unique<OfficePdfPrinter>(options);
    }
};

} // namespace
} // namespace orrery::libreoffice

extern "C" orrery::libreoffice::Plugin* OrreryLibreOfficePlugin()
{
    static orrery::libreoffice::OfficePlugin plugin;
    return &plugin;
}
