#pragma once

#include "engines/libreoffice/plugin/outer_formats.h"
#include "engines/libreoffice/plugin/sheet_guards.h"
#include "generate/spreadsheet.h"

#include <com/sun/star/sheet/XSpreadsheet.hpp>

#include <memory>
#include <string>

namespace orrery::libreoffice {

class Workbook;

/// A sheet of a workbook that is open in LibreOffice. It does not change its name by itself.
class Worksheet : public generate::Worksheet {
public:
    Worksheet(Workbook& workbook, std::string name,
              const css::uno::Reference<css::sheet::XSpreadsheet>& sheet);

    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override;
    void CopyAfter(generate::Worksheet& after) override;
    generate::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                 generate::CellMember member) override;

private:
    std::shared_ptr<const SheetGuards> Guards();

    Workbook& workbook_;
    std::string name_;
    css::uno::Reference<css::sheet::XSpreadsheet> sheet_;
    // Those of its model too. The formats are there once it is ready to be copied.
    std::shared_ptr<const SheetGuards> guards_;
    std::shared_ptr<const OuterFormats> outerFormats_;
};

} // namespace orrery::libreoffice
