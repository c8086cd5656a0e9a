#pragma once

#include "book/spreadsheet.h"
#include "engines/excel/dispatch.h"
#include "engines/excel/paths.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orrery::excel {

class Workbook;

class Worksheet : public book::Worksheet {
public:
    /// The workbook owns it.
    Worksheet(Object sheet, Workbook& workbook) : sheet_(std::move(sheet)), workbook_(workbook) {}

    std::string Name() const override { return sheet_.Get("Name").AsText(); }
    void SetName(std::string_view name) override { sheet_.Put("Name", Variant(name)); }
    /// The sheet must be one of this application.
    void CopyAfter(book::Worksheet& after) override;
    book::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                 book::CellMember member) override;

    bool IsVisible() const;
    /// Selects it, alone or beside what is selected.
    void Select(bool alone) const { sheet_.Call("Select", {Variant(alone)}); }

private:
    Object sheet_;
    Workbook& workbook_;
};

class Workbook : public book::Workbook {
public:
    /// The model outlives it.
    Workbook(Object workbook, ObjectModel& model) : workbook_(std::move(workbook)), model_(model) {}

    book::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;
    /// Prints the named sheets, in the order of the workbook and without hidden ones, to a PDF
    /// file, whose name ends in ".pdf". Throws also Error(NothingToPrint).
    void ExportPdf(const std::vector<std::string>& sheets, const std::filesystem::path& target);
    /// Closes it without saving; nothing else may be called then.
    void Close() const { workbook_.Call("Close", {Variant(false)}); }

    /// The one sheet for an object of the application; the workbook owns it.
    Worksheet& SheetOf(Pointer<IDispatch> sheet);
    ObjectModel& Model() const { return model_; }

private:
    struct KnownSheet {
        Pointer<IUnknown> identity;
        std::unique_ptr<Worksheet> sheet;
    };

    const Object& Worksheets();
    Worksheet* Find(std::string_view name);

    Object workbook_;
    ObjectModel& model_;
    std::optional<Object> worksheets_; ///< set by the first use
    std::vector<KnownSheet> sheets_;
};

} // namespace orrery::excel
