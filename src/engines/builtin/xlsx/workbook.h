#pragma once

#include "engines/builtin/edit/workbook.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/sheet/shared_strings.h"
#include "engines/builtin/xlsx/sheet/sheet_cells.h"
#include "engines/builtin/xlsx/sheet/sheet_tables.h"
#include "engines/builtin/xlsx/sheet/styles.h"
#include "engines/builtin/xlsx/sheet_copy.h"
#include "engines/builtin/xlsx/workbook_part.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xlsx {

class Workbook;

/// A sheet of an open .xlsx workbook. It keeps the template's text and the changes; its saved text
/// is made when the workbook is saved.
class Sheet : public edit::Sheet {
public:
    enum class Kind { Worksheet, Other };

    Sheet(Workbook& workbook, SheetEntry entry, std::size_t origin, std::string part, Kind kind);

    bool IsWorksheet() const override { return kind_ == Kind::Worksheet; }
    bool IsWritten() const override { return cells_ && !cells_->Empty(); }

private:
    friend class Workbook;
    std::unique_ptr<edit::Sheet> MakeCopy() override;
    void Write(std::int32_t row, std::int32_t column, const book::CellValue& value) override;
    const std::shared_ptr<const SheetText>& Text() const;
    /// The same for a worksheet; nullptr if its part is damaged, and for other sheets.
    const SheetText* ReadableText() const;
    SheetCells& Cells();
    SheetTables& Tables();

    Workbook& workbook_;
    std::uint32_t sheetId_;
    std::string relationshipId_;
    std::string part_; // of the template; for a copy, its model's
    Kind kind_;
    mutable std::shared_ptr<const SheetText> text_;
    mutable bool isDamaged_ = false;
    std::optional<SheetCells> cells_;
    std::optional<SheetTables> tables_;
    // of a copy
    std::shared_ptr<const SheetCopy> copy_;
    std::vector<std::pair<std::string, std::string>> ofWorkbook_; // as in SavedSheet
};

/// An open .xlsx workbook that is edited in place. Nothing is rewritten when a sheet is renamed,
/// copied or written: when the workbook is saved, each changed part is made from the template's
/// text and the changes, and every other part is copied unchanged.
class Workbook : public edit::Workbook {
public:
    /// Throws Error as `Package` does.
    explicit Workbook(const std::filesystem::path& path);

    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

private:
    friend class Sheet;
    class Saving;
    static constexpr std::uint32_t kHighestSheetId = 65534; // [MS-OI29500] 2.1.607

    bool IsStructureProtected() const override { return part_->IsStructureProtected(); }
    std::size_t MaxSheets() const override { return kHighestSheetId; }

    void ReadSheets();
    std::uint32_t FreeSheetId() const;
    std::unique_ptr<Sheet> Copy(Sheet& model);
    void LinkCopy(const Sheet& model, Sheet& copy);
    SharedStrings& Strings();
    void CheckNoStringsAreUnlinked() const;
    std::string AddStringsRelationship();
    const Styles& CellStyles();

    Package package_;
    std::string workbookPart_;
    std::unique_ptr<WorkbookPart> part_;
    std::vector<std::string> templateNames_;
    std::vector<std::string> templateParts_;
    Relationships links_; // of the workbook part, with those of copies and of new shared strings
    std::unique_ptr<SheetCopier> copier_;
    std::unique_ptr<SharedStrings> strings_;
    std::string stringsPart_;
    std::optional<Styles> styles_;
};

} // namespace orrery::xlsx
