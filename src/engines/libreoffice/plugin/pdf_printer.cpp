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

/// Leaves the sheets to print as they are and the others without an area that is printed: unlike
/// hiding them, that also works where the structure of the workbook is protected.
void PrintNoOthers(const Reference<css::frame::XModel2>& model,
                   const std::vector<std::string>& printed)
{
    const Reference<css::sheet::XSpreadsheetDocument> document(model, UNO_QUERY_THROW);
    const auto sheets = document->getSheets();
    bool isAnySeen = false;
    for (const auto& name : sheets->getElementNames()) {
        const Any sheet = sheets->getByName(name);
        if (std::ranges::count(printed, FromUno(name)) > 0) {
            const Reference<css::beans::XPropertySet> properties(sheet, UNO_QUERY_THROW);
            isAnySeen = isAnySeen || properties->getPropertyValue("IsVisible").get<bool>();
        }
        else {
            const Reference<css::sheet::XPrintAreas> areas(sheet, UNO_QUERY_THROW);
            areas->setPrintAreas({});
        }
    }
    if (!isAnySeen)
        throw Error(book::ErrorKind::NothingToPrint);
}

/// Closes a document that nobody needs any more.
class Discarding {
public:
    Discarding(Office& office, const Reference<css::frame::XModel2>& document)
        : office_(office), document_(document)
    {
    }
    ~Discarding() { office_.Discard(document_); }
    Discarding(const Discarding&) = delete;
    Discarding& operator=(const Discarding&) = delete;

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
    const Discarding closing(office_, model);
    office_.Call([&] { PrintNoOthers(model, sheets); });
    StoreDocument(office_, model, "calc_pdf_Export", target);
}

} // namespace orrery::libreoffice
