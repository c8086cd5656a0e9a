#pragma once

#include "book/engines.h"
#include "book/error.h"
#include "book/fake_spreadsheet.h"
#include "book/look/workbook_view.h"
#include "util/error.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orrery::fake {

/// A workbook whose worksheets look as given.
class WorkbookView : public book::WorkbookView {
public:
    explicit WorkbookView(std::vector<book::SheetLook> sheets) : sheets_(std::move(sheets))
    {
        for (const book::SheetLook& sheet : sheets_)
            workbook_.sheets.push_back({sheet.name, {}, {}});
    }
    const book::WorkbookLook& Workbook() const override { return workbook_; }
    const book::SheetLook& Sheet(std::size_t index) override { return sheets_.at(index); }

private:
    book::WorkbookLook workbook_;
    std::vector<book::SheetLook> sheets_;
};

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

    std::unique_ptr<book::WorkbookView> OpenView(const std::filesystem::path& /*path*/) override
    {
        return std::make_unique<WorkbookView>(sheetsToSee);
    }

    bool CanPrintPdf(book::PdfBy by) const override
    {
        return by == book::PdfBy::BuiltIn ? canPrintItself : canPrintPdf;
    }
    std::unique_ptr<book::PdfPrinter> StartPdfPrinter(book::PdfBy by,
                                                      book::Patience* patience) override
    {
        printsBy.push_back(by);
        printerPatience = patience;
        log.Record("Start PDF printer");
        return std::make_unique<PdfPrinter>(log);
    }

    CallLog log;
    std::vector<book::SheetLook> sheetsToSee; ///< of every workbook that is looked at
    bool canPrintPdf = false;
    bool canPrintItself = false;       ///< by the program itself
    std::vector<book::PdfBy> printsBy; ///< of each PDF printer
    std::string resolved = "fake";     ///< the result for every known name
    std::vector<std::string> started;
    std::vector<book::StartRequest> requests;  ///< of each start
    book::Patience* printerPatience = nullptr; ///< of the last PDF printer
};

} // namespace orrery::fake
