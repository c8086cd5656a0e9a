#pragma once

#include "book/spreadsheet.h"
#include "util/error.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What both formats share when a workbook is edited. Sheets keep the template's content; renames,
/// copies and written cells are recorded and become bytes when the workbook is saved.
namespace orrery::edit {

class Workbook;

/// A sheet of an open workbook: one of the template's, or a copy of one.
class Sheet : public book::Worksheet {
public:
    /// The template's sheet at that position, from 0. The workbook outlives its sheets.
    Sheet(Workbook& workbook, std::string name, std::size_t origin);

    std::string Name() const final { return name_; }
    void SetName(std::string_view name) final;
    void CopyAfter(book::Worksheet& after) final;
    book::Worksheet* Next() final;
    void SetCell(std::int32_t row, std::int32_t column, const book::CellValue& value,
                 book::CellMember member) final;

    const std::string& CurrentName() const { return name_; }
    /// The name that the template's formulas use for this sheet, or for a copy's model.
    const std::string& TemplateName() const { return templateName_; }
    bool IsRenamed() const { return name_ != templateName_; }
    /// The position in the template of this sheet or of its model.
    std::size_t Origin() const { return origin_; }
    bool IsCopy() const { return isCopy_; }
    /// Whether it has cells that a calendar can be written to.
    virtual bool IsWorksheet() const = 0;
    /// Whether a cell was written.
    virtual bool IsWritten() const = 0;

private:
    friend class Workbook;
    /// Throws Error if the sheet is damaged and so must stay as it is.
    virtual void CheckRenamable() {}
    /// A copy of this sheet, with the cells written so far. If it cannot be made, throws Error and
    /// changes nothing.
    virtual std::unique_ptr<Sheet> MakeCopy() = 0;
    /// Writes a cell of a worksheet, or throws Error and changes nothing.
    virtual void Write(std::int32_t row, std::int32_t column, const book::CellValue& value) = 0;

    Workbook& workbook_;
    std::string name_;
    std::string templateName_;
    std::size_t origin_;
    bool isCopy_ = false;
};

/// The current name of a sheet, found by its name in the template; nothing if it has not changed.
using NameLookup = std::function<std::optional<std::string>(std::string_view name)>;

/// An open workbook and its current sheets.
class Workbook : public book::Workbook {
public:
    book::Worksheet* FindWorksheet(std::string_view name) final;
    std::vector<util::Error> Losses() const final { return losses_; }

    const std::filesystem::path& Path() const { return path_; }

protected:
    explicit Workbook(std::filesystem::path path) : path_(std::move(path)) {}

    /// Adds the template's next sheet.
    void Add(std::unique_ptr<Sheet> sheet);
    /// The sheets in order, as the format's own type.
    template <class Own> std::vector<Own*> Sheets() const
    {
        std::vector<Own*> sheets;
        sheets.reserve(sheets_.size());
        for (const auto& sheet : sheets_)
            sheets.push_back(static_cast<Own*>(sheet.get()));
        return sheets;
    }
    template <class Own> Own& SheetAt(std::size_t position) const
    {
        return static_cast<Own&>(*sheets_[position]);
    }
    /// The template's sheet that `sheet` is or was copied from.
    template <class Own> const Own& OriginalOf(const Own& sheet) const
    {
        return static_cast<const Own&>(*originals_[sheet.Origin()]);
    }
    /// The template's sheet with that name in the template, or nullptr.
    const Sheet* FindOriginal(std::string_view templateName) const;

    bool HasCopies() const { return sheets_.size() > originals_.size(); }
    bool HasRenamedOriginals() const;
    bool IsChanged() const;
    /// The current names for references in `owner`, or in the workbook for nullptr: within a copy,
    /// its model's name in the template means the copy. Valid until a sheet changes.
    NameLookup NamesSeenBy(const Sheet* owner) const;
    /// Whether each sheet was written, by position.
    std::vector<bool> WrittenSheets() const;

    /// For `Losses`; those without a subject get the path.
    void SetLosses(const std::vector<util::Error>& losses);

    /// Throws Error(StructureProtected) if the workbook's structure is protected.
    void CheckStructure(const Sheet& sheet) const;

private:
    friend class Sheet;
    virtual bool IsStructureProtected() const = 0;
    /// The maximum number of sheets in the format.
    virtual std::size_t MaxSheets() const = 0;

    void Rename(Sheet& sheet, std::string_view name);
    void Copy(Sheet& model, const Sheet& after);
    std::size_t PositionOf(const Sheet& sheet) const;
    std::vector<std::string> NamesBeside(const Sheet* sheet) const;

    std::filesystem::path path_;
    std::vector<std::unique_ptr<Sheet>> sheets_;
    std::vector<Sheet*> originals_;                        // by position in the template
    std::unordered_map<std::string, const Sheet*> byName_; // the same by folded name
    std::vector<util::Error> losses_;                      // of the last save
};

} // namespace orrery::edit
