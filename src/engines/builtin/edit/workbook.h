#pragma once

#include "book/spreadsheet.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What both formats do alike when a workbook is edited. Sheets keep what the template says of
/// them; renaming, copying and writing are noted, and become bytes when the workbook is saved.
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
    /// What the template's formulas call this sheet; of a copy, what they call its model.
    const std::string& TemplateName() const { return templateName_; }
    bool IsRenamed() const { return name_ != templateName_; }
    /// The position in the template of this sheet or of its model.
    std::size_t Origin() const { return origin_; }
    bool IsCopy() const { return isCopy_; }
    /// Whether it has cells that a calendar can be written into.
    virtual bool IsWorksheet() const = 0;
    /// Whether a cell was written.
    virtual bool IsWritten() const = 0;

private:
    friend class Workbook;
    /// Throws Error where the sheet is damaged, so that it has to stay as it is.
    virtual void CheckRenamable() {}
    /// A copy of this sheet with all that was written into it, or nothing changed: throws Error
    /// where it cannot be made.
    virtual std::unique_ptr<Sheet> MakeCopy() = 0;
    /// Writes a cell of a worksheet, or throws Error and changes nothing.
    virtual void Write(std::int32_t row, std::int32_t column, const book::CellValue& value) = 0;

    Workbook& workbook_;
    std::string name_;
    std::string templateName_;
    std::size_t origin_;
    bool isCopy_ = false;
};

/// The current name of a sheet by the one that the template gives it; nothing where it has not
/// changed.
using NameLookup = std::function<std::optional<std::string>(std::string_view name)>;

/// An open workbook: its sheets as they are now.
class Workbook : public book::Workbook {
public:
    book::Worksheet* FindWorksheet(std::string_view name) final;

    const std::filesystem::path& Path() const { return path_; }

protected:
    explicit Workbook(std::filesystem::path path) : path_(std::move(path)) {}

    /// Adds the template's next sheet.
    void Add(std::unique_ptr<Sheet> sheet);
    /// The sheets in their order, as those of a format.
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
    /// The template's sheet that a sheet is, or is a copy of.
    template <class Own> const Own& OriginalOf(const Own& sheet) const
    {
        return static_cast<const Own&>(*originals_[sheet.Origin()]);
    }
    /// The template's sheet of that name there; nullptr where there is none.
    const Sheet* FindOriginal(std::string_view templateName) const;

    bool HasCopies() const { return sheets_.size() > originals_.size(); }
    bool HasRenamedOriginals() const;
    bool IsChanged() const;
    /// The current names as seen from a sheet, or from the workbook for nullptr: a copy's own text
    /// calls the copy what the template calls its model. Valid as long as no sheet changes.
    NameLookup NamesSeenBy(const Sheet* owner) const;
    /// By position whether a sheet was written.
    std::vector<bool> WrittenSheets() const;

    /// Throws Error(StructureProtected) where names and order of the sheets are protected.
    void CheckStructure(const Sheet& sheet) const;

private:
    friend class Sheet;
    virtual bool IsStructureProtected() const = 0;
    /// How many sheets the format can hold.
    virtual std::size_t MostSheets() const = 0;

    void Rename(Sheet& sheet, std::string_view name);
    void Copy(Sheet& model, const Sheet& after);
    std::size_t PositionOf(const Sheet& sheet) const;
    std::vector<std::string> NamesBeside(const Sheet* sheet) const;

    std::filesystem::path path_;
    std::vector<std::unique_ptr<Sheet>> sheets_;
    std::vector<Sheet*> originals_;                        // by their positions in the template
    std::unordered_map<std::string, const Sheet*> byName_; // the same by their names, folded
};

} // namespace orrery::edit
