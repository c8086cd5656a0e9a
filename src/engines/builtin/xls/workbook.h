#pragma once

#include "engines/builtin/common/sheet_list.h"
#include "engines/builtin/xls/compound_file.h"
#include "engines/builtin/xls/globals.h"
#include "engines/builtin/xls/references.h"
#include "engines/builtin/xls/shared_strings.h"
#include "engines/builtin/xls/sheet_cells.h"
#include "engines/builtin/xls/template_sheet.h"
#include "generate/spreadsheet.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

class StreamSink;
class Workbook;

/// A sheet of an open .xls workbook. It shares the template's bytes with its copies and keeps what
/// was written over them; its bytes as saved are made when the workbook is saved.
class Sheet : public generate::Worksheet {
public:
    Sheet(Workbook& workbook, std::string name, std::size_t origin);

    std::string Name() const override { return name_; }
    void SetName(std::string_view name) override;
    void CopyAfter(generate::Worksheet& after) override;
    generate::Worksheet* Next() override;
    void SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                 generate::CellMember member) override;

private:
    friend class Workbook;
    bool IsWritten() const { return cells_ && !cells_->Empty(); }

    Workbook& workbook_;
    std::string name_;
    std::size_t origin_; // position in the template of this sheet or of its model
    bool isCopy_ = false;
    std::optional<SheetCells> cells_;
};

/// An open .xls workbook (BIFF8) that is edited in place. Nothing is rewritten when a sheet is
/// renamed, copied or written: when the workbook is saved, the workbook stream is made from the
/// template's and the changes, and every other stream is taken over as it is.
class Workbook : public generate::Workbook {
public:
    /// Throws Error: FileNotReadable, NotAWorkbook, OldBinaryFormat, PasswordProtected,
    /// DamagedWorkbook.
    explicit Workbook(std::filesystem::path path);

    generate::Worksheet* FindWorksheet(std::string_view name) override;
    void SaveAs(const std::filesystem::path& target, generate::AccessMode accessMode) override;

private:
    friend class Sheet;
    struct Saving;

    /// Does something; an error that does not name the file then does.
    void Naming(const std::function<void()>& action) const;
    void Read();
    void ReadSheets();
    bool BeginsSheet(std::size_t offset) const;
    void FindTails();
    std::size_t PositionOf(const Sheet& sheet) const;
    TemplateSheet& OriginalOf(const Sheet& sheet) { return template_[sheet.origin_]; }
    const std::string& TemplateName(const Sheet& sheet) const
    {
        return globals_->Sheets()[sheet.origin_].Name;
    }
    void CheckStructure(const std::string& name) const;
    void Rename(Sheet& sheet, std::string_view name);
    void Copy(Sheet& model, const Sheet& after);
    void Write(Sheet& sheet, std::int32_t row, std::int32_t column,
               const generate::CellValue& value);
    void CheckCopyable(const Sheet& model);
    SharedStrings& Strings();
    const Formats& CellFormats();

    // what is saved
    bool IsChanged() const;
    bool HasCopies() const;
    bool HasRenamed() const;
    std::vector<SavedSheet> SavedSheets() const;
    std::vector<bool> StaleSheets(const std::vector<SavedSheet>& saved);
    void CheckSize(const Saving& saving) const;
    SheetNameLookup NamesFor(const Sheet* owner, const Saving& saving) const;
    std::uint32_t TextReferences();
    TextPatch MakeCopy(std::string& bytes, std::size_t position, const Saving& saving);
    void WriteStream(StreamSink& sink, const Saving& saving);
    std::string GlobalsBytes(const Saving& saving);
    std::string SheetBytes(std::size_t position, std::size_t offset, const Saving& saving);

    std::filesystem::path path_;
    std::unique_ptr<CompoundFile> file_;
    EntryId streamEntry_{};
    std::string stream_; // decrypted
    bool wasEncrypted_ = false;
    std::optional<Globals> globals_;
    std::vector<TemplateSheet> template_;
    Span end_; // what lies behind the last sheet in the stream
    builtin::SheetList<Sheet> sheets_;
    std::vector<std::size_t> copyable_; // origins that were found to be
    std::optional<SharedStrings> strings_;
    std::optional<Formats> formats_;
};

} // namespace orrery::xls
