#pragma once

#include "engines/builtin/common/recalculation.h"
#include "engines/builtin/common/sheet_list.h"
#include "engines/builtin/xlsx/package.h"
#include "engines/builtin/xlsx/shared_strings.h"
#include "engines/builtin/xlsx/sheet_cells.h"
#include "engines/builtin/xlsx/sheet_copy.h"
#include "engines/builtin/xlsx/sheet_tables.h"
#include "engines/builtin/xlsx/styles.h"
#include "engines/builtin/xlsx/workbook_part.h"
#include "generate/spreadsheet.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orrery::xlsx {

class Workbook;

/// A sheet of an open .xlsx workbook. It keeps the template's text and what was changed since; its
/// text as saved is made when the workbook is saved.
class Sheet : public generate::Worksheet {
public:
    enum class Kind { Worksheet, Other };

    Sheet(Workbook& workbook, SheetEntry entry, std::size_t origin, std::string part, Kind kind);

    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override;
    void CopyAfter(generate::Worksheet& after) override;
    generate::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                 generate::CellMember member) override;

private:
    friend class Workbook;
    void Write(std::int32_t row, std::int32_t column, const generate::CellValue& value);
    const std::shared_ptr<const SheetText>& Text() const;
    /// The same of a worksheet; nullptr where its part is damaged, and for other sheets.
    const SheetText* ReadableText() const;
    SheetCells& Cells();
    SheetTables& Tables();
    bool IsWritten() const { return cells_ && !cells_->Empty(); }

    Workbook& workbook_;
    std::string name_;
    std::string templateName_; // what the template's formulas call this sheet
    std::size_t origin_;       // position in the template of this sheet or of its model
    std::uint32_t sheetId_;
    std::string relationshipId_;
    std::string part_; // of the package; of a copy its own
    Kind kind_;
    bool isCopy_ = false;
    mutable std::shared_ptr<const SheetText> text_;
    mutable bool isDamaged_ = false;
    std::optional<SheetCells> cells_;
    std::optional<SheetTables> tables_;
    std::shared_ptr<const CopyIdentity> identity_; // of a copy
};

/// An open .xlsx workbook that is edited in place. Nothing is rewritten when a sheet is renamed,
/// copied or written: when the workbook is saved, each changed part is made from the template's
/// text and the changes, and every other part is taken over as it is.
class Workbook : public generate::Workbook {
public:
    /// Throws Error as `Package` does.
    explicit Workbook(const std::filesystem::path& path);

    generate::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, generate::AccessMode accessMode) override;

private:
    friend class Sheet;

    void ReadSheets();
    std::size_t PositionOf(const Sheet& sheet) const;
    void CheckStructure(const std::string& name) const;
    const Sheet* FindOriginal(std::string_view templateName) const;
    std::uint32_t FreeSheetId() const;
    void Rename(Sheet& sheet, std::string_view name);
    void Copy(Sheet& model, const Sheet& after);
    std::size_t PositionOfOriginal(std::size_t origin) const;
    SharedStrings& Strings();
    void CheckNoStringsAreUnlinked() const;
    std::string AddStringsRelationship();
    const Styles& CellStyles();

    /// The names of now as seen from a sheet, or from the workbook for nullptr: a copy's own
    /// text calls the copy what the template called its model.
    SheetNames NamesFor(const Sheet* owner) const;
    /// The same for tables and their columns; found once while the workbook is saved.
    const TableNames& TablesFor(const Sheet* owner) const;
    TableNames CollectTables(const Sheet* owner) const;
    bool HasChangedTables() const;
    bool HasCopies() const { return sheets_.size() > templateNames_.size(); }
    bool HasRenamedOriginals() const;
    std::set<const Sheet*> SheetsToRecalculate() const;
    builtin::SheetReads ReadsOf(const Sheet& sheet,
                                const std::map<const Sheet*, std::size_t>& positions) const;
    std::string SheetXml(const Sheet& sheet) const;
    TextPatch SheetPatch(const Sheet& sheet) const;
    TextPatch SelectionPatch(const Sheet& sheet) const;

    // what SaveAs puts into the package
    void PutSheets();
    void PutRenamedParts();
    void PutRenamedPart(const std::string& part, const SheetNames& names, const TableNames& tables);
    void PutRenamedLinks(const std::string& part, const SheetNames& names);
    void PutSharedStrings();
    std::vector<SavedSheet> SavedSheets() const;
    void PutWorkbookPart();
    void PutTitles();
    void DropCalculationChain();
    bool IsOnlyUsedAsChain(const std::string& part) const;

    Package package_;
    std::string workbookPart_;
    std::unique_ptr<WorkbookPart> part_;
    builtin::SheetList<Sheet> sheets_;
    std::vector<std::string> templateNames_;
    std::vector<std::string> templateParts_;
    std::map<std::string, Relationships> templateLinks_; // of parts with links into the workbook
    std::unique_ptr<SheetCopier> copier_;
    std::unique_ptr<SharedStrings> strings_;
    std::string stringsPart_;
    std::optional<Styles> styles_;
    std::unordered_map<std::string, const Sheet*> originals_; // by the folded template's name

    // while the workbook is saved
    std::set<const Sheet*> recalculate_;
    mutable std::map<const Sheet*, TableNames> tables_; // as seen from a sheet, or the workbook
};

} // namespace orrery::xlsx
