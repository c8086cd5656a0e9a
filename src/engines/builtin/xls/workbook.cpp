#include "engines/builtin/xls/workbook.h"

#include "engines/builtin/xls/bytes.h"
#include "engines/builtin/xls/copy_identities.h"
#include "engines/builtin/xls/encryption.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"
#include "util/file_replace.h"
#include "util/paths.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orrery::xls {
namespace {

using engines::CopyName;
using engines::SameSheetName;
using util::Error;
using util::ErrorKind;

constexpr std::uint8_t kWorksheetType = 0;

std::string ReadWholeFile(const std::filesystem::path& path)
{
    auto bytes = util::ReadFile(path);
    if (!bytes)
        throw Error(ErrorKind::FileNotReadable, util::FromPath(path));
    return std::move(*bytes);
}

/// The stream of the workbook. Files for two versions have both, of which the first is the newer
/// one; some programs give the newer one the older name.
EntryId FindStream(const CompoundFile& file)
{
    for (const auto* name : {"Workbook", "Book"}) {
        const auto stream = file.Find(name);
        if (stream && file.Entry(*stream).type == EntryType::Stream)
            return *stream;
    }
    throw Error(ErrorKind::NotAWorkbook);
}

} // namespace

Sheet::Sheet(Workbook& workbook, std::string name, std::size_t origin)
    : workbook_(workbook), name_(std::move(name)), origin_(origin)
{
}

void Sheet::SetName(std::string_view name)
{
    workbook_.Naming([&] { workbook_.Rename(*this, name); });
}

void Sheet::CopyAfter(generate::Worksheet& after)
{
    workbook_.Naming([&] { workbook_.Copy(*this, dynamic_cast<Sheet&>(after)); });
}

generate::Worksheet* Sheet::Next()
{
    const auto next = workbook_.PositionOf(*this) + 1;
    return next < workbook_.sheets_.size() ? workbook_.sheets_[next].get() : nullptr;
}

void Sheet::SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                    generate::CellMember /*member*/)
{
    workbook_.Naming([&] { workbook_.Write(*this, row, column, value); });
}

Workbook::Workbook(std::filesystem::path path) : path_(std::move(path))
{
    Naming([this] { Read(); });
}

void Workbook::Naming(const std::function<void()>& action) const
{
    try {
        action();
    }
    catch (const Error& error) {
        if (!error.Subject().empty())
            throw;
        throw Error(error.Kind(), util::FromPath(path_), error.Cause());
    }
}

void Workbook::Read()
{
    file_ = std::make_unique<CompoundFile>(ReadWholeFile(path_));
    streamEntry_ = FindStream(*file_);
    auto encrypted = file_->ReadStream(streamEntry_);
    auto stream = Decrypt(encrypted);
    if (!stream)
        throw Error(ErrorKind::PasswordProtected);
    wasEncrypted_ = *stream != encrypted;
    stream_ = std::move(*stream);
    globals_.emplace(stream_);
    ReadSheets();
}

void Workbook::ReadSheets()
{
    const auto& entries = globals_->Sheets();
    std::vector<std::size_t> begins; // of the sheets, in the order of the stream
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!BeginsSheet(entries[i].Offset))
            ThrowDamaged("sheet " + std::to_string(i + 1) + " of its list is missing");
        begins.push_back(entries[i].Offset);
    }
    std::sort(begins.begin(), begins.end());
    if (std::adjacent_find(begins.begin(), begins.end()) != begins.end())
        ThrowDamaged("two of its sheets are one");
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto next = std::upper_bound(begins.begin(), begins.end(), entries[i].Offset);
        template_.emplace_back(stream_, entries[i].Offset,
                               next == begins.end() ? stream_.size() : *next,
                               entries[i].Type == kWorksheetType);
        // Readers go on behind a sheet without end, where another has to begin then as now.
        const bool isLast = next == begins.end() || i + 1 == entries.size();
        if (!template_.back().IsWhole() && (isLast || !template_.back().IsReadable()))
            ThrowDamaged("a sheet has no end");
        sheets_.push_back(std::make_unique<Sheet>(*this, entries[i].Name, i));
    }
    FindTails();
}

bool Workbook::BeginsSheet(std::size_t offset) const
{
    const RecordReader reader(stream_, offset);
    return offset >= globals_->End() && reader.IsWhole() && reader.Peek()->type == RecordType::Bof;
}

/// What stands between two sheets stays behind the first of them.
void Workbook::FindTails()
{
    std::vector<TemplateSheet*> order;
    for (auto& sheet : template_)
        order.push_back(&sheet);
    std::sort(order.begin(), order.end(), [](const auto* left, const auto* right) {
        return left->Place().begin < right->Place().begin;
    });
    for (std::size_t i = 0; i + 1 < order.size(); ++i)
        order[i]->SetTail({order[i]->Place().end, order[i + 1]->Place().begin});
    end_ = {order.back()->Place().end, stream_.size()};
}

generate::Worksheet* Workbook::FindWorksheet(std::string_view name)
{
    for (const auto& sheet : sheets_) {
        if (OriginalOf(*sheet).IsWorksheet() && SameSheetName(sheet->name_, name))
            return sheet.get();
    }
    return nullptr;
}

std::size_t Workbook::PositionOf(const Sheet& sheet) const
{
    return builtin::PositionOf(sheets_, sheet);
}

void Workbook::CheckStructure(const std::string& name) const
{
    if (globals_->IsStructureProtected())
        throw Error(ErrorKind::StructureProtected, name);
}

void Workbook::Rename(Sheet& sheet, std::string_view name)
{
    if (name == sheet.name_)
        return;
    CheckStructure(sheet.name_);
    engines::CheckSheetName(name, builtin::NamesBeside(sheets_, &sheet));
    if (OriginalOf(sheet).IsWorksheet())
        OriginalOf(sheet).Text(); // what is damaged stays as it is
    sheet.name_ = name;
}

void Workbook::Copy(Sheet& model, const Sheet& after)
{
    CheckStructure(model.name_);
    if (!OriginalOf(model).IsWorksheet())
        throw Error(ErrorKind::NotAWorksheet, model.name_);
    if (sheets_.size() >= std::numeric_limits<std::int16_t>::max())
        throw Error(ErrorKind::SheetNotCopied, model.name_, "the workbook has too many sheets");
    OriginalOf(model).Text();
    CheckCopyable(model);
    const auto taken = builtin::NamesBeside<Sheet>(sheets_, nullptr);
    auto copy = std::make_unique<Sheet>(*this, CopyName(model.name_, taken), model.origin_);
    copy->isCopy_ = true;
    copy->cells_ = model.cells_;
    sheets_.insert(sheets_.begin() + static_cast<std::ptrdiff_t>(PositionOf(after)) + 1,
                   std::move(copy));
}

void Workbook::Write(Sheet& sheet, std::int32_t row, std::int32_t column,
                     const generate::CellValue& value)
{
    if (!OriginalOf(sheet).IsWorksheet())
        throw Error(ErrorKind::NotAWorksheet, sheet.name_);
    if (!sheet.cells_)
        sheet.cells_.emplace(OriginalOf(sheet).Text());
    sheet.cells_->CheckWritable(row, column, CellFormats());
    if (!sheet.cells_->TakesValue(row, column))
        return;
    if (!CellFormats().Has(OriginalOf(sheet).Text()->FormatOf({row, column})))
        ThrowDamaged("the format of a cell is not in its list of formats");
    if (const auto* text = std::get_if<std::string>(&value))
        sheet.cells_->Set(row, column,
                          SheetCells::Text{static_cast<std::uint32_t>(Strings().IndexOf(*text))});
    else
        sheet.cells_->Set(row, column, std::get<std::int16_t>(value));
}

/// What cannot be copied is told when it is asked for, not when the workbook is saved.
void Workbook::CheckCopyable(const Sheet& model)
{
    if (std::find(copyable_.begin(), copyable_.end(), model.origin_) != copyable_.end())
        return;
    const std::vector<SavedSheet> copy = {{model.name_, model.origin_, true}};
    try {
        CopyIdentities(*globals_, *file_, template_, copy);
    }
    catch (const Error& error) {
        if (error.Kind() != ErrorKind::SheetNotCopied)
            throw;
        throw Error(error.Kind(), model.name_, error.Cause());
    }
    copyable_.push_back(model.origin_);
}

SharedStrings& Workbook::Strings()
{
    if (!strings_)
        strings_.emplace(globals_->StringsOnly().In(stream_));
    return *strings_;
}

const Formats& Workbook::CellFormats()
{
    if (!formats_) {
        Formats formats;
        for (const auto& place : globals_->FormatPlaces())
            formats.Add(place.In(stream_).substr(kRecordHeader));
        formats_ = std::move(formats);
    }
    return *formats_;
}

} // namespace orrery::xls
