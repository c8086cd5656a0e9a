#pragma once

#include "engines/excel/dispatch.h"
#include "generate/spreadsheet.h"

namespace orrery::excel {

class Workbook;

class Worksheet : public generate::Worksheet {
public:
    /// The workbook is its owner.
    Worksheet(Object sheet, Workbook& workbook) : sheet_(std::move(sheet)), workbook_(workbook) {}

    std::string Name() const override { return sheet_.Get("Name").AsText(); }
    void SetName(std::string_view name) override { sheet_.Put("Name", Variant(name)); }
    /// The sheet must be one of this application.
    void CopyAfter(generate::Worksheet& after) override;
    generate::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                 generate::CellMember member) override;

private:
    Object sheet_;
    Workbook& workbook_;
};

} // namespace orrery::excel
