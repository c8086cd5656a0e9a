#pragma once

#include "book/engines.h"
#include "book/error.h"
#include "book/fake_spreadsheet.h"
#include "util/error.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrery::fake {

/// Offers one spreadsheet application, "fake", also known as "auto".
class Engines : public book::Engines {
public:
    std::string Resolve(const std::string& name) const override
    {
        if (name != "auto" && name != "fake")
            throw Error(book::ErrorKind::EngineMissing, name);
        return resolved;
    }
    std::unique_ptr<book::Application> Start(const std::string& name,
                                             book::StartRequest request) override
    {
        started.push_back(name);
        requests.push_back(std::move(request));
        return std::make_unique<Application>(log);
    }

    bool CanPrintPdf() const override { return canPrintPdf; }
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter(book::Patience* patience) override
    {
        printerPatience = patience;
        log.Record("Start PDF printer");
        return std::make_unique<PdfPrinter>(log);
    }

    CallLog log;
    bool canPrintPdf = false;
    std::string resolved = "fake"; ///< the result for every known name
    std::vector<std::string> started;
    std::vector<book::StartRequest> requests;  ///< of each start
    book::Patience* printerPatience = nullptr; ///< of the last PDF printer
};

} // namespace orrery::fake
