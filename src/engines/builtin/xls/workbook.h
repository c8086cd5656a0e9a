#pragma once

#include "engines/builtin/edit/workbook.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/formula/references.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/shared_strings.h"
#include "engines/builtin/xls/sheet/sheet_cells.h"
#include "engines/builtin/xls/sheet/template_sheet.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

class StreamSink;
class Workbook;

/// A sheet of an open .xls workbook. It shares the template's bytes with its copies and keeps the
/// written cells; its saved bytes are made when the workbook is saved.
class Sheet : public edit::Sheet {
public:
    Sheet(Workbook& workbook, std::string name, std::size_t origin);

    bool IsWorksheet() const override { return Original().IsWorksheet(); }
    bool IsWritten() const override { return cells_ && !cells_->Empty(); }

private:
    friend class Workbook;
    void CheckRenamable() override;
    std::unique_ptr<edit::Sheet> MakeCopy() override;
    void Write(std::int32_t row, std::int32_t column, const book::CellValue& value) override;
    TemplateSheet& Original() const;

    Workbook& workbook_;
    std::optional<SheetCells> cells_;
};

/// An open .xls workbook (BIFF8) that is edited in place. Nothing is rewritten when a sheet is
/// renamed, copied or written: when the workbook is saved, the workbook stream is made from the
/// template's stream and the changes, and every other stream is copied unchanged.
class Workbook : public edit::Workbook {
public:
    /// Throws Error: FileNotReadable, NotAWorkbook, OldBinaryFormat, PasswordProtected,
    /// DamagedWorkbook.
    explicit Workbook(std::filesystem::path path);

    void SaveAs(const std::filesystem::path& target, book::AccessMode accessMode) override;

private:
    friend class Sheet;
    struct Saving;

    bool IsStructureProtected() const override { return globals_->IsStructureProtected(); }
    std::size_t MaxSheets() const override;

    void Read();
    void ReadSheets();
    bool BeginsSheet(std::size_t offset) const;
    void FindTails();
    void CheckCopyable(const Sheet& model);
    SharedStrings& Strings();
    const Styles& CellStyles();

    // for saving
    std::vector<SavedSheet> SavedSheets() const;
    std::vector<bool> SheetsToRecalculate(const std::vector<SavedSheet>& saved);
    void CheckSize(const Saving& saving) const;
    std::uint32_t StringReferences();
    TextPatch MakeCopyBytes(std::string& bytes, std::size_t position, const Saving& saving);
    void WriteStream(StreamSink& sink, const Saving& saving);
    std::string GlobalsBytes(const Saving& saving);
    std::string SheetBytes(std::size_t position, std::size_t offset, const Saving& saving);

    std::unique_ptr<CompoundFile> file_;
    EntryId streamEntry_{};
    std::string stream_; // decrypted
    bool wasEncrypted_ = false;
    std::optional<Globals> globals_;
    std::vector<TemplateSheet> template_;
    Span end_;                          // the bytes after the last sheet in the stream
    std::vector<std::size_t> copyable_; // positions in the template of sheets that can be copied
    std::optional<SharedStrings> strings_;
    std::optional<Styles> styles_;
};

} // namespace orrery::xls
