#pragma once

#include "engines/builtin/edit/recalculation.h"
#include "engines/builtin/edit/workbook.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/sheet/shared_strings.h"
#include "engines/builtin/xlsx/sheet/sheet_cells.h"
#include "engines/builtin/xlsx/sheet/sheet_tables.h"
#include "engines/builtin/xlsx/sheet/styles.h"
#include "engines/builtin/xlsx/sheet_copy.h"
#include "engines/builtin/xlsx/workbook_part.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

class Workbook;

/// A sheet of an open .xlsx workbook. It keeps the template's text and what was changed since; its
/// text as saved is made when the workbook is saved.
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
    /// The same of a worksheet; nullptr where its part is damaged, and for other sheets.
    const SheetText* ReadableText() const;
    SheetCells& Cells();
    SheetTables& Tables();

    Workbook& workbook_;
    std::uint32_t sheetId_;
    std::string relationshipId_;
    std::string part_; // of the package; of a copy its own
    Kind kind_;
    mutable std::shared_ptr<const SheetText> text_;
    mutable bool isDamaged_ = false;
    std::optional<SheetCells> cells_;
    std::optional<SheetTables> tables_;
    std::shared_ptr<const CopyIdentity> identity_; // of a copy
};

/// An open .xlsx workbook that is edited in place. Nothing is rewritten when a sheet is renamed,
/// copied or written: when the workbook is saved, each changed part is made from the template's
/// text and the changes, and every other part is taken over as it is.
class Workbook : public edit::Workbook {
public:
    /// Throws Error as `Package` does.
    explicit Workbook(const std::filesystem::path& path);

    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

private:
    friend class Sheet;
    static constexpr std::uint32_t kHighestSheetId = 65534; // [MS-OI29500] 2.1.607

    bool IsStructureProtected() const override { return part_->IsStructureProtected(); }
    std::size_t MostSheets() const override { return kHighestSheetId; }

    void ReadSheets();
    std::uint32_t FreeSheetId() const;
    std::unique_ptr<Sheet> Copy(Sheet& model);
    SharedStrings& Strings();
    void CheckNoStringsAreUnlinked() const;
    std::string AddStringsRelationship();
    const Styles& CellStyles();

    SheetNames NamesFor(const Sheet* owner) const
    {
        return {NamesSeenBy(owner), NamesSeenBy(nullptr)};
    }
    /// The current names of tables and their columns as seen from a sheet, or from the workbook for
    /// nullptr; found once while the workbook is saved.
    const TableNames& TablesFor(const Sheet* owner) const;
    TableNames CollectTables(const Sheet* owner) const;
    bool HasChangedTables() const;
    std::set<const Sheet*> SheetsToRecalculate() const;
    edit::SheetReads ReadsOf(const Sheet& sheet,
                             const std::map<const edit::Sheet*, std::size_t>& positions) const;
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
    std::vector<std::string> templateNames_;
    std::vector<std::string> templateParts_;
    std::map<std::string, Relationships> templateLinks_; // of parts with links into the workbook
    std::unique_ptr<SheetCopier> copier_;
    std::unique_ptr<SharedStrings> strings_;
    std::string stringsPart_;
    std::optional<Styles> styles_;

    // while the workbook is saved
    std::set<const Sheet*> recalculate_;
    mutable std::map<const Sheet*, TableNames> tables_; // as seen from a sheet, or the workbook
};

} // namespace orrery::xlsx
