#pragma once

#include "book/spreadsheet.h"
#include "engines/common/cell_address.h"
#include "engines/libreoffice/plugin/office.h"
#include "engines/libreoffice/plugin/outer_formats.h"
#include "engines/libreoffice/plugin/sheet_guards.h"

#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>

#include <memory>
#include <string>
#include <vector>

namespace orrery::libreoffice {

class Sheets;

/// A sheet of a workbook that is open in LibreOffice. Only this program changes its name.
class Worksheet : public book::Worksheet {
public:
    Worksheet(Sheets& sheets, std::string name,
              const css::uno::Reference<css::sheet::XSpreadsheet>& sheet);

    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override;
    void CopyAfter(book::Worksheet& after) override;
    book::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                 book::CellMember member) override;

private:
    std::shared_ptr<const SheetGuards> Guards();

    Sheets& sheets_;
    std::string name_;
    css::uno::Reference<css::sheet::XSpreadsheet> sheet_;
    // Shared with its model. The formats are read when the sheet is first copied.
    std::shared_ptr<const SheetGuards> guards_;
    std::shared_ptr<const OuterFormats> outerFormats_;
};

/// The sheets of a workbook that is open in LibreOffice, and what they have in common.
class Sheets {
public:
    explicit Sheets(Office& office) : office_(office) {}

    /// Takes the sheets of this document; worksheets handed out before are invalid then.
    void Adopt(const Reference<css::frame::XModel2>& document, bool isBinary);

    /// In the workbook's order.
    std::vector<std::string> Names() const;
    /// The one object for the sheet with that name.
    Worksheet& Of(const std::string& name);
    /// Throws Error(StructureProtected) for that sheet if the structure is protected.
    void CheckStructure(const std::string& sheet) const;
    /// All cells that a sheet has in the file's format.
    engines::CellRange Whole() const
    {
        return {{1, 1},
                isBinary_ ? engines::CellAddress{65536, 256}
                          : engines::CellAddress{1048576, 16384}};
    }
    bool IsBinary() const { return isBinary_; }
    Office& Instance() const { return office_; }
    const Reference<css::frame::XModel2>& Document() const { return document_; }
    const Reference<css::sheet::XSpreadsheets>& Collection() const { return collection_; }

private:
    Office& office_;
    Reference<css::frame::XModel2> document_;
    Reference<css::sheet::XSpreadsheets> collection_;
    bool isBinary_ = false;
    std::vector<std::unique_ptr<Worksheet>> known_;
};

} // namespace orrery::libreoffice
