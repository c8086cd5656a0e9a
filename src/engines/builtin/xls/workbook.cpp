#include "engines/builtin/xls/workbook.h"

#include "book/error.h"
#include "engines/builtin/common/error_path.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/copy_identities.h"
#include "engines/builtin/xls/records/workbook_stream.h"
#include "util/error.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orrery::xls {
namespace {

using book::ErrorKind;
using builtin::WithErrorPath;
using util::Error;

constexpr std::uint8_t kWorksheetType = 0;

} // namespace

TemplateSheet& Sheet::Original() const
{
    return workbook_.template_[Origin()];
}

Sheet::Sheet(Workbook& workbook, std::string name, std::size_t origin)
    : edit::Sheet(workbook, std::move(name), origin), workbook_(workbook)
{
}

void Sheet::CheckRenamable()
{
    if (IsWorksheet())
        Original().Text();
}

std::unique_ptr<edit::Sheet> Sheet::MakeCopy()
{
    Original().Text();
    workbook_.CheckCopyable(*this);
    auto copy = std::make_unique<Sheet>(workbook_, TemplateName(), Origin());
    copy->cells_ = cells_;
    return copy;
}

void Sheet::Write(std::int32_t row, std::int32_t column, const book::CellValue& value)
{
    if (!cells_)
        cells_.emplace(Original().Text());
    cells_->CheckWritable(row, column, workbook_.CellStyles());
    if (!cells_->TakesValue(row, column))
        return;
    if (!workbook_.CellStyles().Has(Original().Text()->FormatOf({row, column})))
        ThrowDamaged("the format of a cell is not in its list of formats");
    if (const auto* text = std::get_if<std::string>(&value)) {
        const auto index = workbook_.Strings().IndexOf(*text);
        cells_->Set(row, column, SheetCells::SharedStringIndex{static_cast<std::uint32_t>(index)});
    }
    else {
        cells_->Set(row, column, std::get<std::int16_t>(value));
    }
}

Workbook::Workbook(std::filesystem::path path) : edit::Workbook(std::move(path))
{
    WithErrorPath(Path(), [this] { Read(); });
}

std::size_t Workbook::MaxSheets() const
{
    return std::numeric_limits<std::int16_t>::max();
}

void Workbook::Read()
{
    file_ = std::make_unique<CompoundFile>(ReadWholeFile(Path()));
    streamEntry_ = FindWorkbookStream(*file_);
    auto stream = ReadWorkbookStream(*file_, streamEntry_);
    wasEncrypted_ = stream.wasEncrypted;
    stream_ = std::move(stream.bytes);
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
        // Readers continue after a sheet without end, so another sheet must begin there before and
        // after.
        const bool isLast = next == begins.end() || i + 1 == entries.size();
        if (!template_.back().IsWhole() && (isLast || !template_.back().IsReadable()))
            ThrowDamaged("a sheet has no end");
        Add(std::make_unique<Sheet>(*this, entries[i].Name, i));
    }
    FindTails();
}

bool Workbook::BeginsSheet(std::size_t offset) const
{
    const RecordReader reader(stream_, offset);
    return offset >= globals_->End() && reader.IsWhole() && reader.Peek()->type == RecordType::Bof;
}

/// Bytes between two sheets stay after the first of them.
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

/// Throws when a copy is requested, not when the workbook is saved.
void Workbook::CheckCopyable(const Sheet& model)
{
    if (std::find(copyable_.begin(), copyable_.end(), model.Origin()) != copyable_.end())
        return;
    const std::vector<SavedSheet> copy = {{model.CurrentName(), model.Origin(), true}};
    try {
        CopyIdentities(*globals_, *file_, template_, copy);
    }
    catch (const Error& error) {
        if (error.Kind() != ErrorKind::SheetNotCopied)
            throw;
        throw Error(error.Kind(), model.CurrentName(), error.Cause());
    }
    copyable_.push_back(model.Origin());
}

SharedStrings& Workbook::Strings()
{
    if (!strings_) {
        std::size_t used = 0;
        for (TemplateSheet& sheet : template_)
            used = std::max(used, sheet.Strings().used);
        strings_.emplace(globals_->StringsOnly().In(stream_), used);
    }
    return *strings_;
}

const Styles& Workbook::CellStyles()
{
    if (!styles_) {
        Styles formats;
        for (const auto& place : globals_->FormatPlaces())
            formats.Add(place.In(stream_).substr(kRecordHeader));
        styles_ = std::move(formats);
    }
    return *styles_;
}

} // namespace orrery::xls
