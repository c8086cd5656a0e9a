#include "engines/libreoffice/plugin/pdf_printer.h"

#include "book/error.h"
#include "engines/libreoffice/plugin/document.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/sheet/XPrintAreas.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>

#include <algorithm>

namespace orrery::libreoffice {
namespace {

using css::uno::UNO_QUERY_THROW;

/// Takes the print areas from the sheets that are not to be printed: unlike hiding them, that also
/// works if the structure of the workbook is protected.
void ClearOtherPrintAreas(const Reference<css::frame::XModel2>& model,
                          const std::vector<std::string>& printed)
{
    const Reference<css::sheet::XSpreadsheetDocument> document(model, UNO_QUERY_THROW);
    const auto sheets = document->getSheets();
    bool isAnyVisible = false;
    for (const auto& name : sheets->getElementNames()) {
        const Any sheet = sheets->getByName(name);
        if (std::ranges::count(printed, FromUno(name)) > 0) {
            const Reference<css::beans::XPropertySet> properties(sheet, UNO_QUERY_THROW);
            isAnyVisible = isAnyVisible || properties->getPropertyValue("IsVisible").get<bool>();
        }
        else {
            const Reference<css::sheet::XPrintAreas> areas(sheet, UNO_QUERY_THROW);
            areas->setPrintAreas({});
        }
    }
    if (!isAnyVisible)
        throw Error(book::ErrorKind::NothingToPrint);
}

/// Closes a document at the end of the scope.
class DocumentCloser {
public:
    DocumentCloser(Office& office, const Reference<css::frame::XModel2>& document)
        : office_(office), document_(document)
    {
    }
    ~DocumentCloser() { office_.Discard(document_); }
    DocumentCloser(const DocumentCloser&) = delete;
    DocumentCloser& operator=(const DocumentCloser&) = delete;

private:
    Office& office_;
    Reference<css::frame::XModel2> document_;
};

} // namespace

void OfficePdfPrinter::Print(const std::filesystem::path& workbook,
                             const std::vector<std::string>& sheets,
                             const std::filesystem::path& target)
{
    const auto model = OpenDocument(office_, workbook, LoadMode::ToPrint);
    const DocumentCloser closing(office_, model);
    office_.Call([&] { ClearOtherPrintAreas(model, sheets); });
    StoreDocument(office_, model, "calc_pdf_Export", target);
}

} // namespace orrery::libreoffice
